// The text form: each section a title, an empty line, the headers and the records,
// written field by field as the classic Write statement writes them.
#include "export/Esportazione.h"

#include "platform/CodePage.h"
#include "platform/Numbers.h"
#include "store/Database.h"

#include <QDate>
#include <QFile>

namespace esporta {

namespace {

// One line of comma-separated fields.
class Riga {
public:
    Riga& Testo(QStringView text)
    {
        separa();
        bytes_ += '"';
        for (const QChar c : text)
            bytes_ += static_cast<char>(platform::CodiceWindows1252(c));
        bytes_ += '"';
        return *this;
    }
    Riga& Vuoto()
    {
        separa();
        return *this;
    }
    // A field as the recordset holds it.
    Riga& Valore(const QVariant& v)
    {
        if (v.isNull()) {
            separa();
            bytes_ += "#NULL#";
            return *this;
        }
        switch (v.typeId()) {
        case QMetaType::QDate:
            return Testo(num::DateText(v.toDate()));
        case QMetaType::Double:
        case QMetaType::LongLong:
        case QMetaType::Int:
            separa();
            bytes_ += num::SqlText(v.toDouble()).toLatin1();
            return *this;
        default:
            return Testo(v.toString());
        }
    }
    QByteArray Fine() const { return bytes_ + "\r\n"; }

private:
    void separa()
    {
        if (campi_++ > 0)
            bytes_ += ',';
    }
    QByteArray bytes_;
    int campi_ = 0;
};

struct Sezione {
    Tabella tabella;
    const char16_t* titolo;
    const char16_t* istruzione;
    std::initializer_list<const char16_t*> intestazioni;
    // Fields by name; an empty name keeps the place and writes nothing.
    std::initializer_list<const char16_t*> campi;
};

const Sezione kSezioni[] = {
    {Tabella::OperazioniChiuse,
     u"Quorvel - Tabella Operazioni chiuse ",
     u"SELECT *  FROM OperazioniChiuse ORDER BY Data",
     {u"Data", u"System", u"Cod", u"Titolo", u"PzoAcquisto", u"Quantità", u"PzoVendita", u"Commissioni", u"GP",
      u"GPPercentuale"},
     {u"Data", u"System", u"Cod", u"Titolo", u"PzoCarico", u"Qta", u"Prezzo", u"Commissioni", u"GP", u"GPPercentuale"}},
    {Tabella::Eseguiti,
     u"Quorvel - Tabella Operazioni Eseguiti ",
     u"SELECT *  FROM Eseguiti ORDER BY Data",
     {u"Data", u"Tipo", u"System", u"Cod", u"Titolo", u"Quantità ", u"Prezzo", u"Errore", u"PzoOttimale"},
     {u"Data", u"Tipo", u"System", u"Cod", u"Titolo", u"Qta", u"Prezzo", u"", u"PrezzoOttimale"}},
    {Tabella::Portafoglio,
     u"Quorvel - Tabella Portafoglo ",
     u"SELECT *  FROM Portafoglio",
     {u"System", u"Cod", u"Titolo", u"Quantità", u"PzoCarico", u"Commissioni"},
     {u"System", u"Cod", u"Titolo", u"Qta", u"PzoCarico", u"Commissioni"}},
};

class FileTesto {
public:
    explicit FileTesto(const QString& path) : file_(path)
    {
        if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate))
            throw ErroreEsportazione(QStringLiteral("Impossibile scrivere il file ") + path);
    }
    void Scrivi(const QByteArray& line)
    {
        if (file_.write(line) != line.size())
            throw ErroreEsportazione(QStringLiteral("Impossibile scrivere il file ") + file_.fileName());
    }
    void Scrivi(Riga riga) { Scrivi(riga.Fine()); }
    void Chiudi()
    {
        if (!file_.flush())
            throw ErroreEsportazione(QStringLiteral("Impossibile scrivere il file ") + file_.fileName());
        file_.close();
    }

private:
    QFile file_;
};

void scriviSezione(FileTesto& out, store::Database& db, const Sezione& s, Avanzamento& avanzamento)
{
    out.Scrivi(Riga().Testo(QStringView(s.titolo)));
    out.Scrivi(Riga());
    Riga intestazioni;
    for (const char16_t* h : s.intestazioni)
        intestazioni.Testo(QStringView(h));
    out.Scrivi(intestazioni);

    store::Recordset rs = ApriContando(db, QStringView(s.istruzione).toString());
    if (rs.RecordCount() > 0)
        avanzamento.Massimo(rs.RecordCount());
    // Counts from 1, so the label reads one more than the records.
    int contatore = 1;
    while (!rs.Eof()) {
        Riga riga;
        for (const char16_t* campo : s.campi) {
            const QStringView nome(campo);
            if (nome.isEmpty())
                riga.Vuoto();
            else
                riga.Valore(rs.Field(nome.toString()));
        }
        out.Scrivi(riga);
        avanzamento.AvanzaProgresso();
        ++contatore;
        rs.MoveNext();
    }
    avanzamento.Etichetta(s.tabella, QString::number(contatore));
    if (s.tabella != Tabella::Portafoglio) {
        out.Scrivi(Riga());
        out.Scrivi(Riga());
    }
}

} // namespace

void EsportaCsv(store::Database& db, const QString& file, const Scelta& scelta, Avanzamento& avanzamento)
{
    FileTesto out(file);
    avanzamento.MostraBarra(true);
    for (const Tabella t : kTabelle)
        avanzamento.Etichetta(t, QString());
    for (const Sezione& s : kSezioni)
        if (scelta.Contiene(s.tabella))
            scriviSezione(out, db, s, avanzamento);
    out.Chiudi();
    avanzamento.MostraBarra(false);
}

} // namespace esporta
