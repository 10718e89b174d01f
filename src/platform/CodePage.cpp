#include "platform/CodePage.h"

namespace platform {

namespace {

// Latin-1 but for codes 128-159.
constexpr char16_t kRiga80[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                  0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

unsigned char CodiceWindows1252(QChar c)
{
    const char16_t u = c.unicode();
    if (u < 0x80 || (u >= 0xA0 && u <= 0xFF))
        return static_cast<unsigned char>(u);
    for (int i = 0; i < 32; ++i)
        if (kRiga80[i] == u)
            return static_cast<unsigned char>(0x80 + i);
    return '?';
}

QChar CarattereWindows1252(unsigned char code)
{
    return code >= 0x80 && code < 0xA0 ? QChar(kRiga80[code - 0x80]) : QChar(code);
}

QString TestoWindows1252(const QByteArray& bytes)
{
    QString t;
    t.reserve(bytes.size());
    for (const char b : bytes)
        t += CarattereWindows1252(static_cast<unsigned char>(b));
    return t;
}

} // namespace platform
