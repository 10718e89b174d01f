// The workbook form: one protected sheet per table, with the logo and a title band,
// the headers on a grey band and the records from row 3 under frozen panes.
#include "export/Esportazione.h"

#include "platform/Numbers.h"
#include "store/Database.h"

#include <QDate>
#include <QFile>
#include <QHash>
#include <QRegularExpression>

#include <xlsxwriter.h>

#include <algorithm>
#include <array>
#include <utility>

namespace esporta {

namespace {

struct Colonna {
    const char16_t* intestazione;
    const char16_t* campo;
};

struct Layout {
    Tabella tabella;
    const char16_t* titolo;
    std::initializer_list<Colonna> colonne;
};

const Layout kLayout[] = {
    {Tabella::OperazioniChiuse,
     u"Quorvel Tabella operazioni chiuse",
     {{u"Data", u"Data"},
      {u"System", u"System"},
      {u"Cod", u"Cod"},
      {u"Titolo", u"Titolo"},
      {u"PzoCarico", u"PzoCarico"},
      {u"Quantità", u"qta"},
      {u"Prezzo", u"Prezzo"},
      {u"Commissioni", u"Commissioni"},
      {u"GP", u"gp"},
      {u"GPPercentuale", u"GPPercentuale"},
      {u"Errore", u"Errore"},
      {u"PzoOttimale", u"PrezzoOttimale"}}},
    {Tabella::Eseguiti,
     u"Quorvel Tabella eseguiti",
     {{u"Data", u"Data"},
      {u"Tipo", u"Tipo"},
      {u"System", u"System"},
      {u"Codice", u"Cod"},
      {u"Titolo", u"Titolo"},
      {u"Quantità", u"qta"},
      {u"Prezzo", u"Prezzo"},
      {u"Errore", u"Errore"},
      {u"Prezzo ottimale", u"PrezzoOttimale"}}},
    {Tabella::Portafoglio,
     u"Quorvel Tabella portafoglio",
     {{u"Cod", u"Cod"},
      {u"System", u"System"},
      {u"Titolo", u"Titolo"},
      {u"Quantità", u"qta"},
      {u"Pzo carico", u"PzoCarico"},
      {u"Commis.", u"Commissioni"}}},
};

// The formatted block A1:L2, and the widest a column is made for its contents.
constexpr int kColonneBanda = 12;
constexpr int kRigheTestata = 2;
constexpr double kLarghezzaMassima = 60;

// Palette colours of the default colour indexes used.
constexpr lxw_color_t kNero = LXW_COLOR_BLACK; // index 1; 0 would mean no colour here
constexpr lxw_color_t kBianco = 0xFFFFFF;       // index 2
constexpr lxw_color_t kGrigio25 = 0xC0C0C0;     // index 15
constexpr lxw_color_t kGrigio50 = 0x808080;     // index 16

void verifica(lxw_error e)
{
    if (e != LXW_NO_ERROR)
        throw ErroreEsportazione(QString::fromUtf8(lxw_strerror(e)));
}

// The parts of a cell's format, combined as the steps lay them on.
enum Stile : unsigned {
    Nero = 1,          // black band
    Titolo = 2,        // title font
    Intestazione = 4,  // header band
    DataBreve = 8,     // dd/mm/yy
    DataSistema = 16,  // a date where no format was given
    Sbloccato = 32,
};

// A workbook being written; dropped without writing unless closed.
class Cartella {
public:
    explicit Cartella(const QString& file) : wb_(workbook_new(QFile::encodeName(file).constData()))
    {
        if (!wb_)
            throw ErroreEsportazione(QStringLiteral("Impossibile creare la cartella di lavoro"));
    }
    ~Cartella()
    {
        if (wb_)
            lxw_workbook_free(wb_);
    }
    Cartella(const Cartella&) = delete;
    Cartella& operator=(const Cartella&) = delete;

    lxw_worksheet* Foglio(const QString& nome)
    {
        lxw_worksheet* ws = workbook_add_worksheet(wb_, nome.toUtf8().constData());
        if (!ws)
            throw ErroreEsportazione(QStringLiteral("Impossibile aggiungere il foglio ") + nome);
        return ws;
    }

    lxw_format* Formato(unsigned stile)
    {
        if (lxw_format* f = formati_.value(stile))
            return f;
        lxw_format* f = workbook_add_format(wb_);
        if (stile & Nero)
            format_set_bg_color(f, kNero);
        if (stile & Titolo) {
            format_set_font_name(f, "Arial Black");
            format_set_font_size(f, 16);
            format_set_font_color(f, kGrigio25);
        }
        if (stile & Intestazione) {
            format_set_bold(f);
            format_set_bg_color(f, kGrigio50);
            format_set_font_color(f, kBianco);
        }
        if (stile & DataBreve)
            format_set_num_format(f, "dd/mm/yy");
        else if (stile & DataSistema)
            format_set_num_format(f, "dd/mm/yyyy");
        if (stile & Sbloccato)
            format_set_unlocked(f);
        formati_.insert(stile, f);
        return f;
    }

    void Attiva(lxw_worksheet* ws) { worksheet_activate(ws); }

    void Chiudi() { verifica(workbook_close(std::exchange(wb_, nullptr))); }

private:
    lxw_workbook* wb_;
    QHash<unsigned, lxw_format*> formati_;
};

// A typed-in text turns into the number or date it looks like, as a spreadsheet reads what is typed.
QVariant comeDigitato(const QString& text)
{
    static const QRegularExpression numero(QStringLiteral("^[+-]?[0-9]+(,[0-9]+)?$"));
    const QString t = text.trimmed();
    if (numero.match(t).hasMatch())
        return num::Parse(t).value_or(0.0);
    const QDate d = num::ParseShortDate(t);
    if (d.isValid())
        return d;
    return text;
}

// One sheet: A1:L2 keep their formats as cells do, and a value written there takes its cell's format.
class Foglio {
public:
    Foglio(Cartella& cartella, lxw_worksheet* ws) : cartella_(cartella), ws_(ws)
    {
        larghezze_.fill(LXW_DEF_COL_WIDTH);
    }

    void InserisciLogo(const QString& logo)
    {
        verifica(worksheet_insert_image(ws_, 0, 0, QFile::encodeName(logo).constData()));
    }

    void FormattaFoglio()
    {
        verifica(worksheet_set_row(ws_, 0, 27, nullptr));
        for (int c = 0; c < kColonneBanda; ++c)
            testata_[0][c].stile |= Nero;
        testata_[0][3].stile |= Titolo;
        colonnaA_ |= DataBreve;
        testata_[0][0].stile |= DataBreve;
        testata_[1][0].stile |= DataBreve;
        for (int c = 0; c < kColonneBanda; ++c)
            testata_[1][c].stile |= Intestazione;
        colonnaA_ |= Sbloccato;
        altreColonne_ |= Sbloccato;
        for (auto& riga : testata_)
            for (Cella& cella : riga)
                cella.stile |= Sbloccato;
        for (int c = 0; c < kColonneBanda; ++c)
            testata_[0][c].stile &= ~unsigned(Sbloccato);
        // Zero protects objects and scenarios: the library writes these two flags inverted.
        lxw_protection protezione = {};
        worksheet_protect(ws_, nullptr, &protezione);
        worksheet_freeze_panes(ws_, 2, 0);
    }

    // Row and column from 0.
    void Scrivi(int row, int col, const QVariant& value)
    {
        if (row < kRigheTestata && col < kColonneBanda)
            testata_[row][col].valore = value;
        else
            scriviCella(row, col, value, col == 0 ? colonnaA_ : altreColonne_);
        misura(row, col, value);
    }

    void SelezionaA3() { worksheet_set_selection(ws_, 2, 0, 2, 0); }

    // The formatted cells and the column widths, once every value is in.
    void Completa()
    {
        for (int r = 0; r < kRigheTestata; ++r)
            for (int c = 0; c < kColonneBanda; ++c)
                scriviCella(r, c, testata_[r][c].valore, testata_[r][c].stile, true);
        for (int c = 0; c < kColonneBanda; ++c)
            verifica(worksheet_set_column(ws_, static_cast<lxw_col_t>(c), static_cast<lxw_col_t>(c), larghezze_[c],
                                          cartella_.Formato(c == 0 ? colonnaA_ : altreColonne_)));
        verifica(worksheet_set_column(ws_, kColonneBanda, LXW_COL_MAX - 1, LXW_DEF_COL_WIDTH,
                                      cartella_.Formato(altreColonne_)));
    }

private:
    struct Cella {
        unsigned stile = 0;
        QVariant valore;
    };

    void scriviCella(int row, int col, QVariant value, unsigned stile, bool ancheVuota = false)
    {
        const auto r = static_cast<lxw_row_t>(row);
        const auto c = static_cast<lxw_col_t>(col);
        if (value.typeId() == QMetaType::QString)
            value = comeDigitato(value.toString());
        // The workbook's day numbers start in 1900; an earlier date stays as its text.
        if (value.typeId() == QMetaType::QDate && value.toDate().year() < 1900)
            value = num::DateText(value.toDate());
        if (value.typeId() == QMetaType::QDate && !(stile & DataBreve))
            stile |= DataSistema;
        lxw_format* f = cartella_.Formato(stile);
        if (value.isNull() || (value.typeId() == QMetaType::QString && value.toString().isEmpty())) {
            if (ancheVuota)
                verifica(worksheet_write_blank(ws_, r, c, f));
            return;
        }
        switch (value.typeId()) {
        case QMetaType::QDate: {
            const QDate d = value.toDate();
            lxw_datetime dt = {d.year(), d.month(), d.day(), 0, 0, 0};
            verifica(worksheet_write_datetime(ws_, r, c, &dt, f));
            return;
        }
        case QMetaType::Double:
        case QMetaType::LongLong:
        case QMetaType::Int:
            verifica(worksheet_write_number(ws_, r, c, value.toDouble(), f));
            return;
        default:
            verifica(worksheet_write_string(ws_, r, c, value.toString().toUtf8().constData(), f));
        }
    }

    // Widens a column to what it shows; the title in D1 runs over its neighbours instead.
    void misura(int row, int col, const QVariant& value)
    {
        if (row == 0 || col >= kColonneBanda)
            return;
        qsizetype n = value.typeId() == QMetaType::QDate ? 10 : num::Text(value).size();
        if (row == 1)
            n += 2; // bold
        larghezze_[col] = std::clamp(static_cast<double>(n) + 1.5, larghezze_[col], kLarghezzaMassima);
    }

    Cartella& cartella_;
    lxw_worksheet* ws_;
    std::array<std::array<Cella, kColonneBanda>, kRigheTestata> testata_{};
    unsigned colonnaA_ = 0;
    unsigned altreColonne_ = 0;
    std::array<double, kColonneBanda> larghezze_{};
};

} // namespace

QStringList IntestazioniFoglio(Tabella t)
{
    QStringList out;
    for (const Layout& l : kLayout)
        if (l.tabella == t)
            for (const Colonna& c : l.colonne)
                out << QString::fromUtf16(c.intestazione);
    return out;
}

void EsportaXls(store::Database& db, const QString& file, const Scelta& scelta, const QString& logo,
                Avanzamento& avanzamento)
{
    // The empty workbook is on disk first: a failure further on leaves that.
    {
        Cartella vuota(file);
        for (int n = 1; n <= 3; ++n)
            vuota.Foglio(QStringLiteral("Foglio%1").arg(n));
        vuota.Chiudi();
    }

    // Each chosen table takes the place of the next default sheet; the others keep their names.
    std::vector<const Layout*> scelti;
    for (const Layout& l : kLayout)
        if (scelta.Contiene(l.tabella))
            scelti.push_back(&l);
    Cartella cartella(file);
    std::array<lxw_worksheet*, 3> fogli{};
    for (int n = 1; n <= 3; ++n) {
        const std::size_t i = static_cast<std::size_t>(n - 1);
        fogli[i] = cartella.Foglio(i < scelti.size() ? NomeTabella(scelti[i]->tabella) : QStringLiteral("Foglio%1").arg(n));
    }

    avanzamento.MostraBarra(true);
    for (std::size_t i = 0; i < scelti.size(); ++i) {
        const Layout& l = *scelti[i];
        Foglio foglio(cartella, fogli[i]);
        foglio.InserisciLogo(logo);
        foglio.Scrivi(0, 3, QString::fromUtf16(l.titolo));
        foglio.FormattaFoglio();
        int col = 0;
        for (const Colonna& c : l.colonne)
            foglio.Scrivi(1, col++, QString::fromUtf16(c.intestazione));

        store::Recordset rs = ApriContando(db, QStringLiteral("SELECT *  FROM ") + NomeTabella(l.tabella));
        if (rs.RecordCount() > 0)
            avanzamento.Massimo(rs.RecordCount());
        int riga = 2;
        while (!rs.Eof()) {
            ++riga;
            col = 0;
            for (const Colonna& c : l.colonne)
                foglio.Scrivi(riga - 1, col++, rs.Field(QString::fromUtf16(c.campo)));
            avanzamento.AvanzaProgresso();
            rs.MoveNext();
        }
        avanzamento.Etichetta(l.tabella, QString::number(riga - 2));
        foglio.SelezionaA3();
        foglio.Completa();
    }
    // The first chosen table always took the first place.
    cartella.Attiva(fogli[0]);
    cartella.Chiudi();
    avanzamento.MostraBarra(false);
}

} // namespace esporta
