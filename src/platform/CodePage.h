#pragma once
// The Western Windows code page, one byte a character: the scrambled passwords and the
// text export both write in it.
#include <QByteArray>
#include <QChar>
#include <QString>

namespace platform {

// The code of a character; what the page lacks becomes '?'. The five codes the page
// leaves free (0x81, 0x8D, 0x8F, 0x90, 0x9D) stand for themselves.
unsigned char CodiceWindows1252(QChar c);
// The character of a code 0-255.
QChar CarattereWindows1252(unsigned char code);
// A text written in the page.
QString TestoWindows1252(const QByteArray& bytes);

} // namespace platform
