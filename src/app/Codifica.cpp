#include "app/Codifica.h"

#include "platform/Casuale.h"
#include "platform/CodePage.h"

#include <cmath>

namespace {

// The scrambled form holds one byte a character: the euro and the typographic quotes
// need their code page codes to come back, and what the page lacks becomes "?".
int codice(QChar c) { return platform::CodiceWindows1252(c); }

QChar carattere(int code)
{
    return code >= 0 && code <= 0xFF ? platform::CarattereWindows1252(static_cast<unsigned char>(code)) : QChar(code);
}

int keyCode(const QString& key, int k) { return codice(key.at(k - 1)); }

int nextKeyIndex(int k, const QString& key) { return k < key.size() ? k + 1 : 1; }

int hexValue(const QString& text)
{
    bool ok = false;
    const int v = text.trimmed().toInt(&ok, 16);
    return ok ? v : 0;
}

} // namespace

QString CodificaConSeme(const QString& key, const QString& text, int seed)
{
    QString out = QString::number(seed, 16).toUpper();
    int previous = seed;
    int k = 0;
    for (const QChar c : text) {
        int v = (codice(c) + previous) % 255;
        k = nextKeyIndex(k, key);
        v ^= keyCode(key, k);
        // Two places, right-aligned: a value below 16 gets a leading blank.
        out += QString::number(v, 16).toUpper().rightJustified(2, QLatin1Char(' '));
        previous = v;
    }
    return out;
}

QString TestoAnsi(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text)
        out += carattere(codice(c));
    return out;
}

QString Codifica(const QString& mode, const QString& key, const QString& text)
{
    if (mode == QLatin1String("E")) {
        // The only place that seeds the shared generator.
        platform::Generatore().Randomize();
        const double r = platform::Generatore().Rnd();
        const int seed = static_cast<int>(std::nearbyint(r * 10000.0)) % 255 + 1;
        return CodificaConSeme(key, text, seed);
    }
    if (mode != QLatin1String("D") || key.isEmpty())
        return {};
    // Always two characters for the seed, though the encoder writes one below 16.
    int previous = hexValue(text.left(2));
    QString out;
    int k = 0;
    for (int pos = 2; pos < text.size(); pos += 2) {
        const int c = hexValue(text.mid(pos, 2));
        k = nextKeyIndex(k, key);
        int t = c ^ keyCode(key, k);
        if (t <= previous)
            t = 255 + t - previous;
        else
            t = t - previous;
        out += carattere(t);
        previous = c;
    }
    return out;
}
