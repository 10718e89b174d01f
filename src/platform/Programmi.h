#pragma once
// Starting another program by path, replaceable in tests.
#include <QString>
#include <QStringList>

#include <functional>

namespace platform {

// Starts a program in a process of its own without waiting for it; false when it can't start.
bool AvviaProgramma(const QString& programma, const QStringList& argomenti = {});

// Puts another starter in place of the real one; an empty function restores it.
using Avviatore = std::function<bool(const QString& programma, const QStringList& argomenti)>;
void SostituisciAvviatore(Avviatore avviatore);

// Full path of the first of these programs found on PATH; empty when none is.
QString PrimoSulPercorso(const QStringList& nomi);

} // namespace platform
