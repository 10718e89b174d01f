#pragma once
// The one place for how numbers and dates turn into text and back.
// The program speaks Italian whatever the machine's locale.
#include "platform/Failure.h"

#include <QDate>
#include <QString>
#include <QVariant>

#include <array>
#include <cstdint>
#include <optional>

namespace num {

// Default text of a number: up to 15 significant digits, no trailing zeros,
// decimal comma, no thousands separator ("1234,5", "-0,25", "100").
QString Text(double value);
// The same with a decimal point, as a number goes into a statement.
QString SqlText(double value);
// Every comma of a text replaced by a point.
QString CommaToPoint(const QString& text);

// Rounding to n decimals, a tie going to the even digit. A tie is a tie of the
// number as its default text shows it (2,675 is one, though its binary form lies
// below); every other value goes to the nearest. The result is the double
// nearest to the rounded decimal.
double Round(double value, int decimals = 0);
// Whole-number figures of the statistics: toward minus infinity.
double Floor(double value);
// 16-bit conversion: half to even, fails on overflow.
std::int16_t ToInt16(double value);
// Division that fails on a zero divisor instead of giving inf or NaN.
double Divide(double dividend, double divisor);

// A running figure that may never have been given a value.
using Figure = std::optional<double>;
inline double ValueOf(const Figure& f) { return f.value_or(0.0); }
// Empty text for an unset figure.
QString Text(const Figure& f);

// Reads typed text with a decimal comma (a point is taken too).
// nullopt when the text is no number.
std::optional<double> Parse(const QString& text);

// Italian short date dd/mm/yyyy.
QString DateText(const QDate& date);
// Accepts d/m/yyyy and dd/mm/yyyy; an invalid QDate otherwise.
QDate ParseShortDate(QStringView text);
// Weekday with Sunday = 1 ... Saturday = 7.
int Weekday(const QDate& date);

// Default text of a field value: numbers and dates as above, null as empty.
QString Text(const QVariant& value);

// A table with fixed bounds [Low, High], as the journal's limits are.
template <typename T, long long Low, long long High>
class FixedTable {
public:
    static constexpr long long kLow = Low;
    static constexpr long long kHigh = High;
    T& operator[](long long i) { return items_[slot(i)]; }
    const T& operator[](long long i) const { return items_[slot(i)]; }
    static constexpr bool Contains(long long i) { return i >= Low && i <= High; }

private:
    static std::size_t slot(long long i)
    {
        if (!Contains(i))
            throw platform::IndexOutOfRange(i);
        return static_cast<std::size_t>(i - Low);
    }
    std::array<T, static_cast<std::size_t>(High - Low + 1)> items_{};
};

} // namespace num
