#include "ledger/FoglioEseguiti.h"

#include "export/Esportazione.h"
#include "platform/Numbers.h"
#include "platform/Workbook.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <optional>

namespace ledger {

namespace {

const QString kFoglio = QStringLiteral("Eseguiti");

// A cell as the text it was before the workbook read it as a number or a date.
QString testo(const QVariant& v)
{
    if (v.typeId() == QMetaType::QString)
        return v.toString();
    return platform::Workbook::Text(v);
}

std::optional<double> numero(const QVariant& v)
{
    std::optional<double> n;
    if (v.typeId() == QMetaType::Double)
        n = v.toDouble();
    else if (v.typeId() == QMetaType::QString)
        n = num::Parse(v.toString().trimmed());
    // A cell may say "nan" or "inf": no quantity or price.
    return n && std::isfinite(*n) ? n : std::nullopt;
}

QDate data(const QVariant& v)
{
    if (v.typeId() == QMetaType::QDate)
        return v.toDate();
    if (v.typeId() == QMetaType::QDateTime)
        return v.toDateTime().date();
    // Dates before 1900 are written as their text.
    if (v.typeId() == QMetaType::QString)
        return num::ParseShortDate(v.toString().trimmed());
    return {};
}

bool vuota(const QVariantList& riga)
{
    for (const QVariant& v : riga)
        if (!v.isNull() && !(v.typeId() == QMetaType::QString && v.toString().trimmed().isEmpty()))
            return false;
    return true;
}

} // namespace

QList<EseguitoImportato> LeggiFoglioEseguiti(const QString& path)
{
    const QString nome = QFileInfo(path).fileName();
    const QString foglio = "Il foglio \"" + kFoglio + "\" di " + nome;
    QList<QVariantList> righe;
    try {
        platform::Workbook wb(path);
        if (!wb.SheetNames().contains(kFoglio, Qt::CaseInsensitive))
            throw FileNonValido("La cartella di lavoro " + nome + " non ha un foglio \"" + kFoglio
                                + "\" esportato da Quorvel: niente da importare.");
        righe = wb.Rows(kFoglio);
    } catch (const FileNonValido&) {
        throw;
    } catch (const platform::Failure& e) {
        throw FileNonValido(QString::fromStdString(e.what()));
    }

    const QStringList intestazioni = esporta::IntestazioniFoglio(esporta::Tabella::Eseguiti);
    const QVariantList riga2 = righe.size() > 1 ? righe[1] : QVariantList();
    bool layout = riga2.size() >= intestazioni.size();
    for (qsizetype c = 0; layout && c < intestazioni.size(); ++c)
        layout = testo(riga2[c]).trimmed().compare(intestazioni[c], Qt::CaseInsensitive) == 0;
    if (!layout)
        throw FileNonValido(foglio + " non ha le colonne dell'esportazione di Quorvel nella riga 2 ("
                            + intestazioni.join(QStringLiteral(", ")) + "): niente da importare.");

    QList<EseguitoImportato> out;
    for (qsizetype i = 2; i < righe.size(); ++i) {
        QVariantList r = righe[i];
        if (vuota(r))
            continue;
        r.resize(std::max<qsizetype>(r.size(), intestazioni.size()));
        const int numeroRiga = static_cast<int>(i + 1);
        const auto errore = [&](const char* cosa) {
            return FileNonValido(foglio + ", riga " + QString::number(numeroRiga) + ": " + QString::fromUtf8(cosa) + ".");
        };
        EseguitoImportato e;
        e.riga = numeroRiga;
        e.data = data(r[0]);
        if (!e.data.isValid())
            throw errore("data non valida");
        e.tipo = testo(r[1]);
        e.system = testo(r[2]);
        e.cod = testo(r[3]);
        e.titolo = testo(r[4]);
        const std::optional<double> qta = numero(r[5]), prezzo = numero(r[6]);
        if (!qta)
            throw errore("quantità non valida");
        if (!prezzo)
            throw errore("prezzo non valido");
        e.qta = *qta;
        e.prezzo = *prezzo;
        e.errore = testo(r[7]);
        const std::optional<double> ottimale = numero(r[8]);
        if (!ottimale && !testo(r[8]).trimmed().isEmpty())
            throw errore("prezzo ottimale non valido");
        e.prezzoOttimale = ottimale.value_or(e.prezzo);
        out << e;
    }
    // A trade typed later with an earlier date comes after its sale in the sheet: in date
    // order every row meets the check as it met it in the portfolio that was exported.
    std::stable_sort(out.begin(), out.end(), [](const EseguitoImportato& a, const EseguitoImportato& b) {
        return a.data < b.data;
    });
    return out;
}

} // namespace ledger
