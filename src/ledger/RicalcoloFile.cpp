// The in-memory replay's reading and writing: the same rows the statements read,
// and a result written so that the tables end exactly as the statements leave them.
#include "ledger/Ricalcolo.h"

#include "platform/Numbers.h"
#include "store/Database.h"
#include "store/Dialect.h"
#include "store/Prepared.h"

#include <QAnyStringView>

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ledger {

namespace {

using Kind = store::Prepared::Kind;

// A value the statement replay would read another way.
struct Estraneo {};

// 'YYYY-MM-DD' as the Data columns hold it; anything else is invalid.
QDate dataIso(QUtf8StringView t)
{
    if (t.size() != 10 || t[4] != '-' || t[7] != '-')
        return {};
    int v[3] = {0, 0, 0};
    const int inizio[3] = {0, 5, 8}, fine[3] = {4, 7, 10};
    for (int p = 0; p < 3; ++p) {
        for (int i = inizio[p]; i < fine[p]; ++i) {
            if (t[i] < '0' || t[i] > '9')
                return {};
            v[p] = v[p] * 10 + (t[i] - '0');
        }
    }
    return QDate(v[0], v[1], v[2]);
}

double numero(const store::Prepared& q, int c)
{
    const Kind k = q.KindOf(c);
    if (k != Kind::Real && k != Kind::Integer && k != Kind::Null)
        throw Estraneo{};
    return q.Real(c); // null reads 0, as the cursors read it
}

// True for a code in the first column, false for a null one.
bool codice(const store::Prepared& q)
{
    const Kind k = q.KindOf(0);
    if (k != Kind::Text && k != Kind::Null)
        throw Estraneo{};
    return k == Kind::Text;
}

// Texts of the ledger repeat (types, systems, codes): each distinct one is built once.
class Testi {
public:
    const QString& Di(const store::Prepared& q, int c)
    {
        const Kind k = q.KindOf(c);
        if (k == Kind::Null)
            return vuoto_;
        if (k != Kind::Text)
            throw Estraneo{};
        const QUtf8StringView t = q.Utf8(c);
        const std::string_view chiave(t.data(), static_cast<std::size_t>(t.size()));
        auto it = visti_.find(chiave);
        if (it == visti_.end())
            it = visti_.emplace(std::string(chiave), t.toString()).first;
        return it->second;
    }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
    };
    std::unordered_map<std::string, QString, Hash, std::equal_to<>> visti_;
    const QString vuoto_;
};

bool stessoNumero(const store::Prepared& q, int c, double v)
{
    return q.KindOf(c) == Kind::Real && std::bit_cast<std::uint64_t>(q.Real(c)) == std::bit_cast<std::uint64_t>(v);
}

bool stessoTesto(const store::Prepared& q, int c, const QString& v)
{
    return q.KindOf(c) == Kind::Text && QAnyStringView::equal(q.Utf8(c), v);
}

// The columns of each derived table: how a row is compared with what it must hold, and written.
struct TabellaPortafoglio {
    static constexpr const char* kLeggi =
        "SELECT rowid, System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni FROM Portafoglio ORDER BY rowid";
    static constexpr const char* kTaglia = "DELETE FROM Portafoglio WHERE rowid > ?1";
    static constexpr const char* kSvuota = "DELETE FROM Portafoglio";
    static constexpr const char* kScrivi = "INSERT INTO Portafoglio (rowid, System, Cod, Titolo, Qta, PzoCarico, Importo, "
                                           "Commissioni) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)";
    static bool Uguale(const store::Prepared& q, const Posizione& p)
    {
        return stessoTesto(q, 1, p.system) && stessoTesto(q, 2, p.cod) && stessoTesto(q, 3, p.titolo)
            && stessoNumero(q, 4, p.qta) && stessoNumero(q, 5, p.pzoCarico) && stessoNumero(q, 6, p.importo)
            && stessoNumero(q, 7, p.commissioni);
    }
    static void Lega(store::Prepared& s, const Posizione& p)
    {
        s.Bind(2, p.system).Bind(3, p.cod).Bind(4, p.titolo).Bind(5, p.qta).Bind(6, p.pzoCarico).Bind(7, p.importo)
            .Bind(8, p.commissioni);
    }
};

struct TabellaChiuse {
    static constexpr const char* kLeggi = "SELECT rowid, Data, giornoDiSettimana, System, Cod, Titolo, PzoCarico, Qta, "
                                          "Prezzo, GP, GPPercentuale, Commissioni, Errore, PrezzoOttimale "
                                          "FROM OperazioniChiuse ORDER BY rowid";
    static constexpr const char* kTaglia = "DELETE FROM OperazioniChiuse WHERE rowid > ?1";
    static constexpr const char* kSvuota = "DELETE FROM OperazioniChiuse";
    static constexpr const char* kScrivi = "INSERT INTO OperazioniChiuse (rowid, Data, giornoDiSettimana, System, Cod, "
                                           "Titolo, PzoCarico, Qta, Prezzo, GP, GPPercentuale, Commissioni) "
                                           "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12)";
    static bool Uguale(const store::Prepared& q, const Chiusa& c)
    {
        return q.KindOf(1) == Kind::Text && dataIso(q.Utf8(1)) == c.data && stessoNumero(q, 2, c.giorno)
            && stessoTesto(q, 3, c.system) && stessoTesto(q, 4, c.cod) && stessoTesto(q, 5, c.titolo)
            && stessoNumero(q, 6, c.pzoCarico) && stessoNumero(q, 7, c.qta) && stessoNumero(q, 8, c.prezzo)
            && stessoNumero(q, 9, c.gp) && stessoNumero(q, 10, c.gpPercentuale) && stessoNumero(q, 11, c.commissioni)
            && q.KindOf(12) == Kind::Null && q.KindOf(13) == Kind::Null;
    }
    static void Lega(store::Prepared& s, const Chiusa& c)
    {
        s.Bind(2, store::DateParamValue(num::DateText(c.data))).Bind(3, static_cast<double>(c.giorno)).Bind(4, c.system)
            .Bind(5, c.cod).Bind(6, c.titolo).Bind(7, c.pzoCarico).Bind(8, c.qta).Bind(9, c.prezzo).Bind(10, c.gp)
            .Bind(11, c.gpPercentuale).Bind(12, c.commissioni);
    }
};

// Makes a table hold exactly `righe` (rowids ascending): the leading rows that hold
// already what they must are kept, everything after them is deleted and written anew.
template <typename Tabella, typename Riga>
void allinea(store::Database& db, const std::vector<Riga>& righe)
{
    std::size_t tenute = 0;
    {
        store::Prepared q(db, QString::fromLatin1(Tabella::kLeggi));
        while (tenute < righe.size() && q.Next()) {
            if (q.Integer(0) != righe[tenute].rowid || !Tabella::Uguale(q, righe[tenute]))
                break;
            ++tenute;
        }
    }
    // Nothing kept: every row goes, also one that another program gave a rowid below 1.
    if (tenute == 0)
        store::Prepared(db, QString::fromLatin1(Tabella::kSvuota)).Run();
    else
        store::Prepared(db, QString::fromLatin1(Tabella::kTaglia)).Bind(1, righe[tenute - 1].rowid).Run();
    store::Prepared scrivi(db, QString::fromLatin1(Tabella::kScrivi));
    for (std::size_t i = tenute; i < righe.size(); ++i) {
        scrivi.Bind(1, righe[i].rowid);
        Tabella::Lega(scrivi, righe[i]);
        scrivi.Run();
    }
}

// Every counter as the statements leave it: the count of its code, 0 for the others.
void contatori(store::Database& dbSet, const Ricalcolo& r)
{
    store::Prepared q(dbSet, QStringLiteral("SELECT rowid, Cod, Contatore FROM Errori"));
    std::vector<std::pair<long long, double>> cambiati;
    while (q.Next()) {
        const double voluto = q.KindOf(1) == Kind::Text ? r.contatori.value(NocaseKey(q.Utf8(1).toString()), 0.0) : 0.0;
        if (!stessoNumero(q, 2, voluto))
            cambiati.emplace_back(q.Integer(0), voluto);
    }
    store::Prepared scrivi(dbSet, QStringLiteral("UPDATE Errori SET Contatore = ?1 WHERE rowid = ?2"));
    for (const auto& [rowid, valore] : cambiati)
        scrivi.Bind(1, valore).Bind(2, rowid).Run();
}

} // namespace

std::optional<Libro> LeggiLibro(store::Database& dbExe, store::Database& dbSet)
{
    try {
        Libro libro;
        store::Prepared e(dbSet, QStringLiteral("SELECT Cod FROM Errori"));
        while (e.Next())
            if (codice(e)) // a null code matches no text
                libro.errori.insert(NocaseKey(e.Utf8(0).toString()));
        store::Prepared s(dbSet, QStringLiteral("SELECT Cod, Commissioni, CommissioniMin FROM System"));
        while (s.Next()) {
            const Sistema sistema{numero(s, 1), numero(s, 2)};
            // The look-up reads the first row of a code.
            if (const QString key = NocaseKey(s.Utf8(0).toString()); codice(s) && !libro.sistemi.contains(key))
                libro.sistemi.insert(key, sistema);
        }
        // The order of "ORDER BY Data" in the store: equal dates in record order.
        store::Prepared t(dbExe, QStringLiteral("SELECT Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo, Errore "
                                                "FROM Eseguiti ORDER BY Data, rowid"));
        Testi testi;
        while (t.Next()) {
            Eseguito& x = libro.eseguiti.emplace_back();
            x.data = t.KindOf(0) == Kind::Text ? dataIso(t.Utf8(0)) : QDate();
            x.tipo = testi.Di(t, 1);
            x.system = testi.Di(t, 2);
            x.cod = testi.Di(t, 3);
            x.titolo = testi.Di(t, 4);
            x.qta = numero(t, 5);
            x.prezzo = numero(t, 6);
            x.importo = numero(t, 7);
            x.errore = testi.Di(t, 8);
        }
        return libro;
    } catch (const Estraneo&) {
        return std::nullopt;
    }
}

void ScriviRicalcolo(store::Database& dbExe, store::Database& dbSet, const Ricalcolo& r)
{
    store::Transaction setTx(dbSet);
    store::Transaction exeTx(dbExe);
    contatori(dbSet, r);
    allinea<TabellaPortafoglio>(dbExe, r.portafoglio);
    allinea<TabellaChiuse>(dbExe, r.chiuse);
    exeTx.Commit();
    setTx.Commit();
}

} // namespace ledger
