#pragma once
// Registers every built window with the frame by its name.
void RegistraFinestre();
