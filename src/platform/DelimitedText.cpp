#include "platform/DelimitedText.h"

#include "platform/CodePage.h"

#include <QHash>
#include <QStringDecoder>

#include <algorithm>

namespace platform {

namespace {

// The rows the guesses look at: broker files put their header within the first few.
constexpr qsizetype kRigheEsaminate = 200;

QString windows1252(const QByteArray& bytes)
{
    QString t(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i)
        t[i] = CarattereWindows1252(static_cast<unsigned char>(bytes[i]));
    return t;
}

qsizetype piene(const QStringList& riga)
{
    return std::count_if(riga.begin(), riga.end(), [](const QString& c) { return !c.trimmed().isEmpty(); });
}

} // namespace

QString DecodificaTesto(const QByteArray& bytes)
{
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
        QStringDecoder utf16(bytes.startsWith("\xFF\xFE") ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE);
        return utf16(bytes.mid(2));
    }
    const QByteArray corpo = bytes.startsWith("\xEF\xBB\xBF") ? bytes.mid(3) : bytes;
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString t = utf8(corpo);
    if (!utf8.hasError())
        return t;
    return windows1252(corpo);
}

namespace {

// The split, counting the records where a closing quote is followed by anything but the
// separator or a line break: the sign of a wrong separator.
Tabella dividi(const QString& text, QChar separatore, qsizetype massimo, QList<bool>* storte)
{
    Tabella righe;
    bool storta = false;
    QStringList riga;
    QString campo;
    const qsizetype n = text.size();
    qsizetype i = 0;
    bool inizioCampo = true; // nothing of the field read yet: a quote here opens it
    auto chiudiCampo = [&]() {
        riga.append(campo);
        campo.clear();
        inizioCampo = true;
    };
    while (i < n && (massimo < 0 || righe.size() < massimo)) {
        const QChar c = text[i];
        if (inizioCampo && c == u'"') {
            // Quoted: up to the closing quote, whatever stands between.
            ++i;
            while (i < n) {
                if (text[i] == u'"') {
                    if (i + 1 < n && text[i + 1] == u'"') {
                        campo += u'"';
                        i += 2;
                        continue;
                    }
                    ++i;
                    if (i < n && text[i] != separatore && text[i] != u'\r' && text[i] != u'\n')
                        storta = true;
                    break;
                }
                campo += text[i++];
            }
            inizioCampo = false;
        } else if (c == separatore) {
            chiudiCampo();
            ++i;
        } else if (c == u'\r' || c == u'\n') {
            chiudiCampo();
            righe.append(riga);
            riga.clear();
            if (storte)
                storte->append(storta);
            storta = false;
            i += (c == u'\r' && i + 1 < n && text[i + 1] == u'\n') ? 2 : 1;
        } else {
            campo += c;
            inizioCampo = false;
            ++i;
        }
    }
    // The last line without its line break.
    if (!inizioCampo || !riga.isEmpty()) {
        if (massimo < 0 || righe.size() < massimo) {
            chiudiCampo();
            righe.append(riga);
            if (storte)
                storte->append(storta);
        }
    }
    return righe;
}

} // namespace

Tabella DividiCampi(const QString& text, QChar separatore, qsizetype massimo)
{
    return dividi(text, separatore, massimo, nullptr);
}

QChar IndovinaSeparatore(const QString& text)
{
    QChar scelto = u',';
    qsizetype migliore = -1;
    // Ties go to the earlier: a comma also splits decimal numbers.
    for (const QChar sep : {QChar(u';'), QChar(u'\t'), QChar(u',')}) {
        QList<bool> storte;
        const Tabella righe = dividi(text, sep, kRigheEsaminate, &storte);
        QHash<qsizetype, qsizetype> perLarghezza;
        for (qsizetype r = 0; r < righe.size(); ++r)
            if (righe[r].size() >= 2 && !storte[r])
                ++perLarghezza[righe[r].size()];
        qsizetype punti = 0;
        for (auto it = perLarghezza.cbegin(); it != perLarghezza.cend(); ++it)
            punti = std::max(punti, it.value() * (it.key() - 1));
        if (punti > migliore) {
            migliore = punti;
            scelto = sep;
        }
    }
    return migliore > 0 ? scelto : QChar(u',');
}

bool SembraValore(QStringView cella)
{
    bool cifra = false;
    for (const QChar c : cella) {
        if (c.isDigit())
            cifra = true;
        else if (!QStringView(u" .,;:-+/()$\u20AC\u00A3%'\u00A0\u202F").contains(c))
            return false;
    }
    return cifra;
}

qsizetype IndovinaIntestazione(const Tabella& righe)
{
    const qsizetype n = std::min(righe.size(), kRigheEsaminate);
    qsizetype parole = -1, pienePiu = -1; // best rows so far: mostly words, any
    qsizetype maxParole = 1, maxPiene = 0;
    for (qsizetype i = 0; i < n; ++i) {
        const qsizetype p = piene(righe[i]);
        const qsizetype valori = std::count_if(righe[i].begin(), righe[i].end(),
                                               [](const QString& c) { return SembraValore(c.trimmed()); });
        if (p > maxPiene) {
            maxPiene = p;
            pienePiu = i;
        }
        // Mostly words: at least three in four filled cells.
        if (p > maxParole && (p - valori) * 4 >= p * 3) {
            maxParole = p;
            parole = i;
        }
    }
    if (parole >= 0)
        return parole;
    return std::max<qsizetype>(pienePiu, 0);
}

} // namespace platform
