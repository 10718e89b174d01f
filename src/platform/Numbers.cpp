#include "platform/Numbers.h"

#include <QRegularExpression>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

namespace num {

namespace {

// 15 significant digits, trimmed; exponent form only for very large or tiny values.
QString formatWith(double value, QChar decimal)
{
    if (value == 0.0 || std::isnan(value))
        return QStringLiteral("0");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("+inf") : QStringLiteral("-inf");
    char buf[64];
    const double mag = std::fabs(value);
    if (mag >= 1e15 || mag < 1e-10) {
        std::snprintf(buf, sizeof buf, "%.14E", value);
        QString s = QString::fromLatin1(buf);
        const int e = s.indexOf('E');
        QString mant = s.left(e);
        QString exp = s.mid(e + 1);
        if (mant.contains('.')) {
            while (mant.endsWith('0'))
                mant.chop(1);
            if (mant.endsWith('.'))
                mant.chop(1);
        }
        const QChar sign = exp[0];
        exp = exp.mid(1);
        while (exp.size() > 2 && exp.startsWith('0'))
            exp.remove(0, 1);
        mant.replace('.', decimal);
        return mant + 'E' + sign + exp;
    }
    // Whole numbers are the common case in statements; they need no formatting work.
    if (mag < 1e15 && value == std::trunc(value))
        return QString::number(static_cast<long long>(value));
    const auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general, 15);
    QString s = QString::fromLatin1(buf, static_cast<int>(res.ptr - buf));
    if (s.contains('e')) {
        // %g chose an exponent for a value we write out in full.
        const int digitsBefore = static_cast<int>(std::floor(std::log10(mag))) + 1;
        const int decimals = std::max(0, 15 - digitsBefore);
        std::snprintf(buf, sizeof buf, "%.*f", decimals, value);
        s = QString::fromLatin1(buf);
        if (s.contains('.')) {
            while (s.endsWith('0'))
                s.chop(1);
            if (s.endsWith('.'))
                s.chop(1);
        }
    }
    if (s == QLatin1String("-0"))
        s = QStringLiteral("0");
    if (decimal != QLatin1Char('.'))
        s.replace('.', decimal);
    return s;
}

} // namespace

QString Text(double value) { return formatWith(value, QChar(',')); }
QString SqlText(double value) { return formatWith(value, QChar('.')); }

QString CommaToPoint(const QString& text)
{
    QString s = text;
    s.replace(',', '.');
    return s;
}

namespace {

// 10^0 .. 10^22 are exact doubles.
constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                              1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

double fromDecimal(const char* first, const char* last)
{
    double r = 0.0;
    std::from_chars(first, last, r);
    return r;
}

// The slow, exact way: a tie of the 15-digit text goes to even, anything else
// to the nearest of the exact binary value.
double roundByText(double value, int decimals)
{
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 14).ptr;
    // text: [-]d.dddddddddddddde±x
    const char* p = text;
    const bool negative = *p == '-';
    if (negative)
        ++p;
    char digits[15];
    digits[0] = p[0];
    std::memcpy(digits + 1, p + 2, 14);
    int exponent = 0;
    std::from_chars(p + 17 + (p[17] == '+'), end, exponent);

    // Index of the first digit that rounding to `decimals` drops.
    const long long dropped = static_cast<long long>(exponent) + decimals + 1;
    bool tie = dropped >= 0 && dropped <= 14 && digits[dropped] == '5';
    for (long long i = dropped + 1; tie && i < 15; ++i)
        tie = digits[i] == '0';
    if (tie) {
        // Keep digits[0, dropped), made even; the result is kept × 10^(exponent - dropped + 1).
        char out[40];
        char* o = out;
        if (negative)
            *o++ = '-';
        *o++ = '0'; // room for a carry
        std::memcpy(o, digits, static_cast<std::size_t>(dropped));
        char* last = o + dropped - 1;
        o += dropped;
        if (dropped > 0 && (*last - '0') % 2 == 1) {
            while (*last == '9')
                *last-- = '0';
            ++*last;
        }
        *o++ = 'e';
        o = std::to_chars(o, out + sizeof out, exponent - dropped + 1).ptr;
        return fromDecimal(out, o);
    }
    char buf[400];
    const int n = std::snprintf(buf, sizeof buf, "%.*f", decimals, value);
    if (n <= 0 || n >= static_cast<int>(sizeof buf))
        return value; // far beyond the digits a double holds: nothing to round
    return fromDecimal(buf, buf + n);
}

} // namespace

double Round(double value, int decimals)
{
    if (decimals < 0)
        throw platform::Failure("Chiamata di routine o argomento non validi");
    if (!std::isfinite(value))
        return value;
    double result;
    const double scaled = decimals <= 22 ? value * kPowers[decimals] : 0.0;
    const double lower = std::floor(scaled);
    const double frac = scaled - lower;
    // Far enough from a half that neither the product's error nor the 15-digit text
    // can make it a tie: the nearest is plain. Everything else goes the exact way.
    if (decimals <= 22 && std::fabs(scaled) < 0x1p52
        && std::fabs(frac - 0.5) > 1e-13 * std::fabs(scaled))
        result = (frac < 0.5 ? lower : lower + 1.0) / kPowers[decimals];
    else
        result = roundByText(value, decimals);
    return result == 0.0 ? 0.0 : result;
}

double Floor(double value) { return std::floor(value); }

std::int16_t ToInt16(double value)
{
    if (!std::isfinite(value))
        throw platform::OverflowError();
    const double r = Round(value, 0);
    if (r < std::numeric_limits<std::int16_t>::min() || r > std::numeric_limits<std::int16_t>::max())
        throw platform::OverflowError();
    return static_cast<std::int16_t>(r);
}

double Divide(double dividend, double divisor)
{
    if (divisor == 0.0)
        throw platform::DivisionByZero();
    return dividend / divisor;
}

QString Text(const Figure& f)
{
    return f ? Text(*f) : QString();
}

std::optional<double> Parse(const QString& text)
{
    QString s = text.trimmed();
    if (s.isEmpty())
        return std::nullopt;
    s.replace(',', '.');
    bool ok = false;
    const double v = s.toDouble(&ok);
    if (!ok)
        return std::nullopt;
    return v;
}

QString DateText(const QDate& date)
{
    if (!date.isValid())
        return {};
    int y = 0, m = 0, d = 0;
    date.getDate(&y, &m, &d);
    if (y < 1000 || y > 9999)
        return date.toString(QStringLiteral("dd/MM/yyyy"));
    const char16_t text[10] = {char16_t('0' + d / 10), char16_t('0' + d % 10), '/', char16_t('0' + m / 10),
                               char16_t('0' + m % 10), '/', char16_t('0' + y / 1000), char16_t('0' + y / 100 % 10),
                               char16_t('0' + y / 10 % 10), char16_t('0' + y % 10)};
    return QString(reinterpret_cast<const QChar*>(text), 10);
}

QDate ParseShortDate(QStringView text)
{
    // d/m/yyyy or dd/mm/yyyy, by hand: this runs for every date of a replay.
    const QStringView t = text.trimmed();
    int parts[3] = {0, 0, 0};
    int digits[3] = {0, 0, 0};
    int part = 0;
    for (const QChar c : t) {
        if (c == '/') {
            if (++part > 2)
                return {};
        } else if (c >= '0' && c <= '9') {
            parts[part] = parts[part] * 10 + (c.unicode() - '0');
            ++digits[part];
        } else {
            return {};
        }
    }
    if (part != 2 || digits[0] < 1 || digits[0] > 2 || digits[1] < 1 || digits[1] > 2 || digits[2] != 4)
        return {};
    return QDate(parts[2], parts[1], parts[0]);
}

int Weekday(const QDate& date)
{
    // Qt: Monday = 1 ... Sunday = 7.
    return date.dayOfWeek() % 7 + 1;
}

QString Text(const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return {};
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return Text(value.toDouble());
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return QString::number(value.toLongLong());
    case QMetaType::QDate:
        return DateText(value.toDate());
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("Vero") : QStringLiteral("Falso");
    default:
        return value.toString();
    }
}

} // namespace num
