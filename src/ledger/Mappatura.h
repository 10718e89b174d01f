#pragma once
// What the columns of a broker's file mean, and the file's rows turned by it into
// trades, account movements and rows that are neither.
#include "ledger/LetturaValori.h"
#include "ledger/Staging.h"
#include "platform/DelimitedText.h"

#include <QVariant>

#include <array>
#include <optional>

namespace ledger {

// The fields a column can stand for, in the order of the mapping window's combo boxes.
enum class Campo { Data, Ora, Tipo, Segno, Cod, Titolo, Qta, Prezzo, Importo, Cambio };
inline constexpr int kCampi = 10;
// The lists of values of the type column that make a row a trade or a movement.
enum class Parole { Acquisto, Vendita, Versamento, Prelievo, Dividendi, Costi };
inline constexpr int kParole = 6;

struct Mappatura {
    QString nome;
    QStringList intestazione; // the header row's cells, by which a file is recognised
    int rigaIntestazione = 1; // from 1
    QChar separatore = u',';
    QChar decimale = u'.';
    FormatoData formatoData = FormatoData::GgMmAaaa;
    std::array<QString, kCampi> colonne; // header text of each field's column, empty for none
    std::array<QString, kParole> parole; // values separated by ";", compared without case
    // The broker lists newest first: a file whose dates give no direction (one day) is reversed.
    bool recentiPrima = false;

    QString& colonna(Campo c) { return colonne[static_cast<std::size_t>(c)]; }
    const QString& colonna(Campo c) const { return colonne[static_cast<std::size_t>(c)]; }
    QString& lista(Parole p) { return parole[static_cast<std::size_t>(p)]; }
    const QString& lista(Parole p) const { return parole[static_cast<std::size_t>(p)]; }
};

// Directa, Fineco and Interactive Brokers, in this order.
QList<Mappatura> ModelliPredefiniti();

// The model that fits a table, with its header row (index): first a saved model whose
// header row stands in the table, else a built-in model whose columns all stand in one row.
struct Riconoscimento {
    Mappatura modello; // its header row and line set to the table's
    qsizetype riga = 0;
};
std::optional<Riconoscimento> RiconosciModello(const platform::Tabella& righe, const QList<Mappatura>& salvati);

// A row's cells without blanks around them and without empty cells at its end.
QStringList Intestazione(const QStringList& riga);

// Decimal separator and date format from the values below the header, where they leave
// no doubt; otherwise the mapping's stay, but a workbook's sheet keeps the point of its numbers.
void IndovinaFormati(const platform::Tabella& righe, Mappatura& m, bool foglio = false);

// The rows below the header line as trades for the system, movements and skipped rows,
// trades and movements in the order they go in.
Staging Applica(const platform::Tabella& righe, const Mappatura& m, const QString& system);

// A sheet's rows of cell values (text, number, bool, date, date and time, null) as the
// rows of a text file: numbers with a point and no exponent, dates yyyy-mm-dd.
platform::Tabella TabellaDaFoglio(const QList<QVariantList>& righe);

} // namespace ledger
