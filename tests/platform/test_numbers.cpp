#include "platform/Numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <iomanip>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using namespace num;

TEST(Numbers, DefaultTextIsItalianWithFifteenDigitsAndShortDates)
{
    // 15 digits hide the binary tail of 0.1 + 0.2.
    for (const auto& [v, text] : {std::pair{1234.5, "1234,5"}, {-0.25, "-0,25"}, {100.0, "100"}, {0.0, "0"}, {-0.0, "0"},
                                  {1.0 / 3.0, "0,333333333333333"}, {0.1 + 0.2, "0,3"},
                                  {123456789012345.0, "123456789012345"}, {1e20, "1E+20"}})
        EXPECT_EQ(Text(v), text) << text;
    EXPECT_EQ(SqlText(1234.5) + CommaToPoint("12,5"), "1234.512.5");
    // An unset figure shows empty and adds as zero.
    EXPECT_EQ(Text(Figure{}) + "|" + Text(Figure{0.0}), "|0");
    EXPECT_EQ(ValueOf(Figure{}) + 5, 5);

    EXPECT_EQ(DateText(QDate(2003, 1, 7)), "07/01/2003");
    EXPECT_EQ(ParseShortDate(u"17/01/2003"), QDate(2003, 1, 17));
    EXPECT_EQ(ParseShortDate(u"7/1/2003"), QDate(2003, 1, 7));
    EXPECT_FALSE(ParseShortDate(u"30/02/2003").isValid() || ParseShortDate(u"2003-01-17").isValid());
    EXPECT_EQ(Weekday(QDate(2026, 11, 22)) * 10 + Weekday(QDate(2026, 11, 28)), 17); // Sunday 1, Saturday 7
    EXPECT_EQ(Text(QVariant(QDate(2026, 11, 23))) + "|" + Text(QVariant()), "23/11/2026|");
}

namespace {

// An independent rounding, on exact decimal digit strings: the double's exact
// expansion (glibc prints every digit of it), its 15-digit text, and the rounding
// of one of the two.
struct Decimal {
    bool negative = false;
    std::string digits; // no leading zeros but for "0"
    int point = 0;      // digits after the decimal point
};

Decimal exactly(double v)
{
    std::vector<char> buf(1500);
    std::snprintf(buf.data(), buf.size(), "%.1100f", std::fabs(v)); // 2^-1074 has 1074 decimals
    std::string s = buf.data();
    const std::size_t dot = s.find('.');
    Decimal d{std::signbit(v), s.substr(0, dot) + s.substr(dot + 1), static_cast<int>(s.size() - dot - 1)};
    d.digits.erase(0, std::min(d.digits.find_first_not_of('0'), d.digits.size() - 1));
    return d;
}

// Keeps the first `keep` digits and rounds: half to even when what is dropped is
// exactly a half (*tie tells), else to the nearest.
Decimal roundAt(const Decimal& d, int keep, bool* tie = nullptr)
{
    const int size = static_cast<int>(d.digits.size());
    if (tie)
        *tie = false;
    if (keep >= size)
        return d;
    Decimal r = d;
    r.point = d.point - (size - keep);
    if (keep < 0) { // the first dropped digit is a leading zero: below a half
        r.digits = "0";
        return r;
    }
    const std::string dropped = d.digits.substr(static_cast<std::size_t>(keep));
    std::string kept = d.digits.substr(0, static_cast<std::size_t>(keep));
    const bool half = dropped[0] == '5' && dropped.find_first_not_of('0', 1) == std::string::npos;
    if (tie)
        *tie = half;
    const bool odd = !kept.empty() && (kept.back() - '0') % 2 == 1;
    if (dropped[0] > '5' || (dropped[0] == '5' && (!half || odd))) {
        int i = static_cast<int>(kept.size()) - 1;
        for (; i >= 0 && kept[static_cast<std::size_t>(i)] == '9'; --i)
            kept[static_cast<std::size_t>(i)] = '0';
        if (i < 0)
            kept.insert(kept.begin(), '1');
        else
            ++kept[static_cast<std::size_t>(i)];
    }
    r.digits = kept.empty() ? "0" : kept;
    return r;
}

double toDouble(const Decimal& d)
{
    const std::string s = (d.negative ? "-" : "") + d.digits + "e" + std::to_string(-d.point);
    const double r = std::strtod(s.c_str(), nullptr);
    return r == 0.0 ? 0.0 : r;
}

double referenceRound(double v, int decimals)
{
    const Decimal exact = exactly(v);          // its digits start with a non-zero one
    const Decimal text = roundAt(exact, 15);   // the 15 significant digits the user sees
    // Keep the digits up to `decimals` after the point.
    auto keepFor = [decimals](const Decimal& d) { return static_cast<int>(d.digits.size()) - d.point + decimals; };
    bool tie = false;
    const Decimal onText = roundAt(text, keepFor(text), &tie);
    if (tie)
        return toDouble(onText);
    return toDouble(roundAt(exact, keepFor(exact)));
}

} // namespace

TEST(Numbers, RoundingTiesAreTiesOfTheShownTextAndEverythingElseGoesToTheNearest)
{
    // Read as the user reads them: the default text of the rounded value.
    auto shown = [](double v, int decimals) { return Text(Round(v, decimals)); };
    // Ties as the user sees them go to the even digit; near a half but not on it, the nearest,
    // however large the number.
    const std::tuple<double, int, const char*> casi[] = {
        {2.675, 2, "2,68"}, {0.125, 2, "0,12"}, {2.5, 0, "2"}, {3.5, 0, "4"}, {-2.5, 0, "-2"}, {-0.5, 0, "0"},
        {1234.56785, 4, "1234,5678"}, {999999999.99995, 4, "1000000000"}, {50000.0001, 4, "50000,0001"},
        {35007.51 - 10000 - (20 + 35007.51 * 2 / 1000), 2, "24917,49"}, // 24917,49498
        {(7 * 50.41 + 1000 * 50.0) / 1007, 4, "50,0029"},             // 50352,87 / 1007 = 50,00285005
        {87.5553 * 5368, 1, "469996,9"}, {1649.95, 1, "1650"}};        // 469996,8504
    for (const auto& [v, decimals, text] : casi)
        EXPECT_EQ(shown(v, decimals), text) << text;
    EXPECT_FALSE(std::signbit(Round(-0.5)));
    EXPECT_THROW(Round(1.5, -1), platform::Failure);
    EXPECT_EQ(Floor(2.9), 2);
    EXPECT_EQ(Floor(-2.1), -3);

    // Random values of every magnitude up to 10^9 against the digit-string rounding:
    // typed decimals (many of them ties), their binary neighbours, and raw doubles.
    std::mt19937_64 gen(20261123);
    std::uniform_int_distribution<int> decimalsOf(0, 6), placesOf(0, 10), digitsOf(1, 15), coin(0, 1);
    std::uniform_int_distribution<int> digit(0, 9), magnitude(-8, 8);
    std::uniform_real_distribution<double> unit(1.0, 10.0);
    int hard = 0;
    for (int i = 0; i < 60000; ++i) {
        const int decimals = decimalsOf(gen);
        // A raw double, or a number as typed: up to 15 digits with the point somewhere, a tie
        // at `decimals` every third time, and every other time its binary neighbour.
        double v = unit(gen) * std::pow(10.0, magnitude(gen));
        if (i % 3 != 2) {
            const int places = i % 3 == 0 ? decimals + 1 : placesOf(gen);
            std::string s;
            for (int k = std::max(digitsOf(gen), places + 1); k > 0; --k)
                s += static_cast<char>('0' + digit(gen));
            if (i % 3 == 0)
                s.back() = '5';
            s.insert(s.size() - places, ".");
            v = std::fmod(std::strtod(s.c_str(), nullptr), 1e9);
            if (i % 2)
                v = std::nextafter(v, coin(gen) ? 1e300 : -1e300);
        }
        if (coin(gen))
            v = -v;
        const double expected = referenceRound(v, decimals);
        ASSERT_EQ(Round(v, decimals), expected) << std::setprecision(17) << v << " at " << decimals << " decimals: "
                                                << Round(v, decimals) << " instead of " << expected;
        hard += expected != std::nearbyint(v * std::pow(10.0, decimals)) / std::pow(10.0, decimals);
    }
    EXPECT_GT(hard, 1000); // plain binary rounding gets many of them wrong: the cases are not all easy
}

TEST(Numbers, Int16DivisionAndFixedTablesFailOutsideTheirRange)
{
    for (const auto& [v, i] : {std::pair{32767.4, 32767}, {0.5, 0}, {1.5, 2}, {-32768.0, -32768}})
        EXPECT_EQ(ToInt16(v), i) << v;
    for (double v : {32767.5, -32769.0})
        EXPECT_THROW(ToInt16(v), platform::OverflowError) << v;
    EXPECT_DOUBLE_EQ(Divide(1, 4), 0.25);
    EXPECT_THROW(Divide(1, 0), platform::DivisionByZero);
    FixedTable<int, 0, 100> table;
    table[100] = 2;
    EXPECT_EQ(table[100], 2);
    EXPECT_THROW(table[101], platform::IndexOutOfRange);
    EXPECT_THROW(table[-1], platform::IndexOutOfRange);
    FixedTable<double, 1, 10> one;
    EXPECT_THROW(one[0], platform::IndexOutOfRange);
}
