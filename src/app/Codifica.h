#pragma once
#include <QString>

// The fixed key with which the password is scrambled.
inline const QString kChiavePassword = QStringLiteral("QV");

// Scrambles ("E") or unscrambles ("D") a text with a key; any other mode gives "".
QString Codifica(const QString& mode, const QString& key, const QString& text);
// Mode "E" with a given seed (1..255) instead of a random one.
QString CodificaConSeme(const QString& key, const QString& text, int seed);
// A text as the scrambling keeps it, in the Western code page: what a typed
// password is compared in, since a character the page lacks comes back as "?".
QString TestoAnsi(const QString& text);
