// libFuzzer target for the delimited-text reader and the mapping of its rows: an input is
// the bytes of a broker's file.
#include "ledger/Mappatura.h"
#include "platform/DelimitedText.h"
#include "platform/Numbers.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void broken(const char* what)
{
    std::fprintf(stderr, "invariant broken: %s\n", what);
    std::abort();
}

void check(bool ok, const char* what)
{
    if (!ok)
        broken(what);
}

// Whatever the rows: each one below the header is a trade, a movement or skipped, once;
// what goes in is well formed, in date order, and holds no apostrophe.
void verifica(const platform::Tabella& righe, const ledger::Mappatura& m)
{
    const ledger::Staging s = ledger::Applica(righe, m, QStringLiteral("S'1"));
    const qsizetype sotto = std::max<qsizetype>(0, righe.size() - std::max(m.rigaIntestazione, 1));
    check(s.eseguiti.size() + s.movimenti.size() + s.scartate.size() == sotto, "rows lost or counted twice");
    for (qsizetype i = 0; i < s.eseguiti.size(); ++i) {
        const ledger::EseguitoImportato& e = s.eseguiti[i];
        check(e.data.isValid() && (i == 0 || s.eseguiti[i - 1].data <= e.data), "trade date");
        check(e.tipo == u"Buy" || e.tipo == u"Sell", "trade type");
        check(std::isfinite(e.qta) && e.qta > 0, "quantity");
        check(std::isfinite(e.prezzo) && e.prezzo > 0 && e.prezzo == num::Round(e.prezzo, 4) && e.prezzoOttimale == e.prezzo, "price");
        check(!e.cod.isEmpty() && !e.titolo.isEmpty(), "code and title");
        check(!QString(e.cod + e.titolo + e.system).contains(u'\''), "apostrophe in a trade");
    }
    for (qsizetype i = 0; i < s.movimenti.size(); ++i) {
        const ledger::MovimentoImportato& v = s.movimenti[i];
        check(v.data.isValid() && (i == 0 || s.movimenti[i - 1].data <= v.data), "movement date");
        check(std::isfinite(v.importo) && v.importo > 0, "movement amount");
        check(!v.descrizione.isEmpty() && !v.descrizione.contains(u'\''), "movement description");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString testo = platform::DecodificaTesto(bytes);
    const QChar sep = platform::IndovinaSeparatore(testo);
    const platform::Tabella righe = platform::DividiCampi(testo, sep);
    check(platform::DividiCampi(testo, sep, 3) == righe.mid(0, 3), "a limited split is no prefix of the whole");
    const qsizetype h = platform::IndovinaIntestazione(righe);
    check(righe.isEmpty() ? h == 0 : h >= 0 && h < righe.size(), "header outside the rows");

    if (const std::optional<ledger::Riconoscimento> r = ledger::RiconosciModello(righe, {})) {
        ledger::Mappatura m = r->modello;
        ledger::IndovinaFormati(righe, m);
        verifica(righe, m);
    }
    // Whatever the file: its header's first columns mapped in the order of the fields.
    ledger::Mappatura m;
    m.rigaIntestazione = static_cast<int>(h + 1);
    const QStringList intestazione = righe.value(h);
    for (int c = 0; c < ledger::kCampi && c < intestazione.size(); ++c)
        m.colonne[static_cast<std::size_t>(c)] = intestazione[c];
    m.lista(ledger::Parole::Acquisto) = QStringLiteral("buy;a");
    m.lista(ledger::Parole::Vendita) = QStringLiteral("sell;v");
    m.lista(ledger::Parole::Dividendi) = QStringLiteral("d");
    ledger::IndovinaFormati(righe, m);
    verifica(righe, m);
    return 0;
}
