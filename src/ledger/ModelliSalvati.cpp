#include "ledger/ModelliSalvati.h"

#include "store/Database.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace ledger {

namespace {

const char* const kColonneCampi[kCampi] = {"CampoData", "CampoOra",  "CampoTipo",  "CampoSegno",   "CampoCod",
                                    "CampoTitolo", "CampoQta", "CampoPrezzo", "CampoImporto", "CampoCambio"};
const char* const kColonneParole[kParole] = {"ParoleAcquisto", "ParoleVendita",   "ParoleVersamento",
                                      "ParolePrelievo", "ParoleDividendi", "ParoleCosti"};

// A text literal: the names and words come from files and may hold apostrophes.
QString letterale(const QString& s) { return u'\'' + QString(s).replace(u'\'', QStringLiteral("''")) + u'\''; }

QString separatore(QChar c) { return c == u'\t' ? QStringLiteral("Tab") : QString(c); }

} // namespace

QList<Mappatura> CaricaModelli(store::Database& dbSet)
{
    QList<Mappatura> modelli;
    store::Recordset r = dbSet.OpenRecordset(QStringLiteral("SELECT * FROM ModelliImportazione"));
    while (!r.Eof()) {
        Mappatura m;
        m.nome = r.Text(QStringLiteral("Nome"));
        const QJsonArray celle = QJsonDocument::fromJson(r.Text(QStringLiteral("Intestazione")).toUtf8()).array();
        for (const QJsonValue& c : celle)
            m.intestazione.append(c.toString());
        m.rigaIntestazione = static_cast<int>(r.Number(QStringLiteral("RigaIntestazione")));
        const QString sep = r.Text(QStringLiteral("Separatore"));
        m.separatore = sep == u"Tab" ? QChar(u'\t') : (sep.isEmpty() ? QChar(u',') : sep.front());
        m.decimale = r.Text(QStringLiteral("Decimale")) == u"," ? u',' : u'.';
        m.formatoData = FormatoDaNome(r.Text(QStringLiteral("FormatoData"))).value_or(FormatoData::GgMmAaaa);
        for (int c = 0; c < kCampi; ++c)
            m.colonne[static_cast<std::size_t>(c)] = r.Text(QString::fromLatin1(kColonneCampi[c]));
        for (int p = 0; p < kParole; ++p)
            m.parole[static_cast<std::size_t>(p)] = r.Text(QString::fromLatin1(kColonneParole[p]));
        m.recentiPrima = r.Number(QStringLiteral("RecentiPrima")) != 0;
        modelli.append(m);
        r.MoveNext();
    }
    std::reverse(modelli.begin(), modelli.end());
    return modelli;
}

void SalvaModello(store::Database& dbSet, const Mappatura& m)
{
    QStringList colonne = {QStringLiteral("Nome"), QStringLiteral("Intestazione"), QStringLiteral("RigaIntestazione"),
                           QStringLiteral("Separatore"), QStringLiteral("Decimale"), QStringLiteral("FormatoData")};
    QStringList valori = {letterale(m.nome),
                          letterale(QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(m.intestazione)).toJson(QJsonDocument::Compact))),
                          QString::number(m.rigaIntestazione), letterale(separatore(m.separatore)), letterale(QString(m.decimale)),
                          letterale(NomeFormato(m.formatoData))};
    for (int c = 0; c < kCampi; ++c) {
        colonne << QString::fromLatin1(kColonneCampi[c]);
        valori << letterale(m.colonne[static_cast<std::size_t>(c)]);
    }
    for (int p = 0; p < kParole; ++p) {
        colonne << QString::fromLatin1(kColonneParole[p]);
        valori << letterale(m.parole[static_cast<std::size_t>(p)]);
    }
    colonne << QStringLiteral("RecentiPrima");
    valori << QString::number(m.recentiPrima ? 1 : 0);
    store::Transaction tx(dbSet);
    dbSet.Execute(QStringLiteral("DELETE * FROM ModelliImportazione WHERE Nome = ") + letterale(m.nome));
    dbSet.Execute(QStringLiteral("INSERT INTO ModelliImportazione (") + colonne.join(QStringLiteral(", ")) + QStringLiteral(") VALUES (")
                  + valori.join(QStringLiteral(", ")) + u')');
    tx.Commit();
}

} // namespace ledger
