#pragma once
// The system information tool: the first of a few Linux programs found on PATH.
#include <QStringList>

namespace prefs {

// Tried in this order.
const QStringList& ProgrammiInfoSistema();

// Starts the first one found; false when none is, or it fails to start.
bool AvviaInfoSistema();

} // namespace prefs
