#include "ledger/LetturaValori.h"

#include <array>

namespace ledger {

namespace {

const std::array<QString, kFormatiData> kNomiFormato = {QStringLiteral("gg/mm/aaaa"), QStringLiteral("mm/gg/aaaa"),
                                                         QStringLiteral("aaaa-mm-gg"), QStringLiteral("aaaammgg")};

bool cifra(QChar c) { return c >= u'0' && c <= u'9'; }

// Reads a run of at most `massimo` digits at `i`; -1 when there is none.
int numeroA(QStringView t, qsizetype& i, int massimo, int* lette = nullptr)
{
    int v = 0, n = 0;
    while (i < t.size() && n < massimo && cifra(t[i])) {
        v = v * 10 + (t[i].unicode() - u'0');
        ++i;
        ++n;
    }
    if (lette)
        *lette = n;
    return n == 0 ? -1 : v;
}

// The body of an amount, digits and separators only: valid when the thousands come in
// groups of three before the one decimal separator. Gives it with a point.
std::optional<QString> corpo(const QString& s, QChar decimale)
{
    const QChar migliaia = decimale == u',' ? u'.' : u',';
    const qsizetype d = s.indexOf(decimale);
    if (d >= 0 && s.indexOf(decimale, d + 1) >= 0)
        return std::nullopt;
    const QString intera = d >= 0 ? s.left(d) : s;
    const QString decimali = d >= 0 ? s.mid(d + 1) : QString();
    if (decimali.contains(migliaia) || (intera.isEmpty() && decimali.isEmpty()))
        return std::nullopt;
    const QStringList gruppi = intera.split(migliaia);
    for (qsizetype g = 1; g < gruppi.size(); ++g)
        if (gruppi[g].size() != 3 || gruppi[0].isEmpty() || gruppi[0].size() > 3)
            return std::nullopt;
    return gruppi.join(QString()) + u'.' + decimali;
}

} // namespace

QString NomeFormato(FormatoData f) { return kNomiFormato[static_cast<std::size_t>(f)]; }

std::optional<FormatoData> FormatoDaNome(const QString& nome)
{
    for (int i = 0; i < kFormatiData; ++i)
        if (kNomiFormato[static_cast<std::size_t>(i)] == nome)
            return static_cast<FormatoData>(i);
    return std::nullopt;
}

std::optional<double> LeggiNumero(QStringView text, QChar decimale)
{
    QStringView t = text.trimmed();
    bool negativo = false;
    if (t.size() >= 2 && t.front() == u'(' && t.back() == u')') {
        negativo = true;
        t = t.sliced(1, t.size() - 2);
    }
    QString cifre, esponente;
    bool segno = false;
    for (qsizetype i = 0; i < t.size(); ++i) {
        const QChar c = t[i];
        if (cifra(c) || c == u'.' || c == u',') {
            cifre += c;
        } else if ((c == u'-' || c == u'+') && cifre.isEmpty() && !segno) {
            segno = true;
            negativo = negativo != (c == u'-');
        } else if ((c == u'e' || c == u'E') && !cifre.isEmpty() && i + 1 < t.size()) {
            esponente = t.sliced(i + 1).toString();
            break;
        } else if (!c.isSpace() && !QStringView(u"$\u20AC\u00A3'").contains(c)) {
            return std::nullopt;
        }
    }
    bool hasDigit = false;
    for (const QChar c : cifre)
        hasDigit = hasDigit || cifra(c);
    if (!hasDigit)
        return std::nullopt;
    const std::optional<QString> c = corpo(cifre, decimale);
    if (!c)
        return std::nullopt;
    QString testo = *c;
    if (!esponente.isEmpty()) {
        bool ok = false;
        esponente.toInt(&ok);
        if (!ok)
            return std::nullopt;
        testo += u'e' + esponente;
    }
    bool ok = false;
    const double v = testo.toDouble(&ok);
    if (!ok)
        return std::nullopt;
    return negativo ? -v : v;
}

DataOra LeggiDataOra(QStringView text, FormatoData formato)
{
    const QStringView t = text.trimmed();
    qsizetype i = 0;
    int a = 0, m = 0, g = 0;
    if (formato == FormatoData::AaaaMmGgUnito) {
        int lette = 0;
        const int v = numeroA(t, i, 8, &lette);
        if (lette != 8)
            return {};
        a = v / 10000;
        m = v / 100 % 100;
        g = v % 100;
    } else {
        int parti[3] = {0, 0, 0}, lette[3] = {0, 0, 0};
        for (int p = 0; p < 3; ++p) {
            if (p > 0) {
                // One separator of any kind between the parts.
                if (i >= t.size() || cifra(t[i]) || t[i].isLetter())
                    return {};
                ++i;
            }
            parti[p] = numeroA(t, i, 4, &lette[p]);
            if (lette[p] == 0)
                return {};
        }
        const bool annoPrima = formato == FormatoData::AaaaMmGg;
        const int annoIdx = annoPrima ? 0 : 2;
        if (lette[annoIdx] != 4 && lette[annoIdx] != 2)
            return {};
        for (int p = 0; p < 3; ++p)
            if (p != annoIdx && lette[p] > 2)
                return {};
        a = parti[annoIdx] + (lette[annoIdx] == 2 ? 2000 : 0);
        m = formato == FormatoData::MmGgAaaa ? parti[0] : parti[1];
        g = formato == FormatoData::GgMmAaaa ? parti[0] : formato == FormatoData::MmGgAaaa ? parti[1] : parti[2];
    }
    // The date ends at a non-digit: "2024-03-123" is no date.
    if (i < t.size() && cifra(t[i]))
        return {};
    // After the date: nothing, or a time.
    DataOra r;
    const QStringView resto = t.sliced(i);
    r.ora = LeggiOra(resto);
    if (r.ora < 0 && !resto.trimmed().isEmpty())
        return {};
    r.data = QDate(a, m, g);
    if (!r.data.isValid())
        r.ora = -1;
    return r;
}

QDate LeggiData(QStringView text, FormatoData formato) { return LeggiDataOra(text, formato).data; }

int LeggiOra(QStringView text)
{
    QStringView t = text.trimmed();
    // What joins a time to a date: "T", ";", ",", "-", blanks.
    while (!t.isEmpty() && !cifra(t.front()) && !t.front().isLetter())
        t = t.sliced(1);
    if (!t.isEmpty() && t.front() == u'T')
        t = t.sliced(1);
    if (t.isEmpty() || !cifra(t.front()))
        return -1;
    qsizetype i = 0;
    int h = 0, m = 0, s = 0, lette = 0;
    const int primo = numeroA(t, i, 6, &lette);
    if (lette == 6 || lette == 4) {
        h = lette == 6 ? primo / 10000 : primo / 100;
        m = lette == 6 ? primo / 100 % 100 : primo % 100;
        s = lette == 6 ? primo % 100 : 0;
    } else if (lette <= 2 && i < t.size() && (t[i] == u':' || t[i] == u'.')) {
        h = primo;
        ++i;
        m = numeroA(t, i, 2, &lette);
        if (lette != 2)
            return -1;
        if (i + 1 < t.size() && (t[i] == u':' || t[i] == u'.') && cifra(t[i + 1])) {
            ++i;
            s = numeroA(t, i, 2, &lette);
            if (lette != 2)
                return -1;
        }
    } else {
        return -1;
    }
    const QStringView resto = t.sliced(i).trimmed();
    if (resto.startsWith(u"PM", Qt::CaseInsensitive) && h < 12)
        h += 12;
    else if (resto.startsWith(u"AM", Qt::CaseInsensitive) && h == 12)
        h = 0;
    else if (!resto.isEmpty() && cifra(resto.front()))
        return -1;
    if (h > 23 || m > 59 || s > 59)
        return -1;
    return h * 3600 + m * 60 + s;
}

std::optional<QChar> IndovinaDecimale(const QStringList& valori)
{
    int punto = 0, virgola = 0;
    for (const QString& v : valori) {
        QString s;
        for (const QChar c : v)
            if (cifra(c) || c == u'.' || c == u',')
                s += c;
        const qsizetype p = s.count(u'.'), c = s.count(u',');
        if (p + c == 0)
            continue;
        QChar voto;
        if (p > 0 && c > 0) {
            voto = s.lastIndexOf(u'.') > s.lastIndexOf(u',') ? u'.' : u',';
        } else {
            const QChar sep = p > 0 ? u'.' : u',';
            const QChar altro = p > 0 ? u',' : u'.';
            const qsizetype at = s.indexOf(sep);
            const qsizetype dopo = s.size() - at - 1;
            const QString prima = s.left(at);
            if (p + c > 1)
                voto = altro; // repeated: it can only separate thousands
            else if (dopo != 3 || prima.isEmpty() || prima == u"0")
                voto = sep;
            else
                continue; // "1,234": either way
        }
        (voto == u'.' ? punto : virgola)++;
    }
    if (punto == virgola)
        return std::nullopt;
    return punto > virgola ? u'.' : u',';
}

std::optional<FormatoData> IndovinaFormatoData(const QStringList& celle)
{
    // A footer or a subtotal in the date column reads in no format: it has no say.
    QStringList valori;
    for (const QString& v : celle)
        for (int f = 0; f < kFormatiData; ++f)
            if (LeggiData(v, static_cast<FormatoData>(f)).isValid()) {
                valori.append(v);
                break;
            }
    std::optional<FormatoData> trovato;
    for (int f = 0; f < kFormatiData; ++f) {
        const auto formato = static_cast<FormatoData>(f);
        bool tutti = true, uno = false;
        for (const QString& v : valori) {
            uno = true;
            if (!LeggiData(v, formato).isValid()) {
                tutti = false;
                break;
            }
        }
        if (tutti && uno) {
            if (trovato)
                return std::nullopt;
            trovato = formato;
        }
    }
    return trovato;
}

} // namespace ledger
