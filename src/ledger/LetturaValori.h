#pragma once
// Numbers, dates and times as brokers write them in their files, and the guesses
// of how a file writes them.
#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>

namespace ledger {

// The date formats a mapping offers, in the order of its combo box; any separator
// between the parts, an optional time after the date.
enum class FormatoData { GgMmAaaa, MmGgAaaa, AaaaMmGg, AaaaMmGgUnito };
inline constexpr int kFormatiData = 4;
// "gg/mm/aaaa", "mm/gg/aaaa", "aaaa-mm-gg", "aaaammgg".
QString NomeFormato(FormatoData f);
std::optional<FormatoData> FormatoDaNome(const QString& nome);

// An amount with this decimal separator (the other of '.' and ',' separates thousands,
// in groups of three), a sign before or after a currency sign, parentheses for a negative
// amount, blanks and the currency signs $ € £ ignored. nullopt when it is no number.
std::optional<double> LeggiNumero(QStringView text, QChar decimale);

// The date at the start of a text in this format; an invalid date otherwise.
QDate LeggiData(QStringView text, FormatoData formato);
// The same with the time that may follow the date (-1 for none, as LeggiOra).
struct DataOra {
    QDate data;
    int ora = -1;
};
DataOra LeggiDataOra(QStringView text, FormatoData formato);
// Seconds from midnight of the time in a text ("10:15", "10.15.30", "101530", or the
// time after a date); -1 when there is none.
int LeggiOra(QStringView text);

// The decimal separator that most of the values show without doubt (the last of a point
// and a comma, a comma or point followed by other than three digits, a repeated one that
// can only separate thousands); nullopt when none shows it.
std::optional<QChar> IndovinaDecimale(const QStringList& valori);
// The one format that reads every filled value; nullopt when none or more than one does.
std::optional<FormatoData> IndovinaFormatoData(const QStringList& valori);

} // namespace ledger
