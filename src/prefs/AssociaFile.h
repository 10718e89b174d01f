#pragma once
// The portfolio file type (.qvp) in the system's registry of file types.
#include <QString>

namespace platform {
class RegistroTipiFile;
}

namespace prefs {

// The eight writes that make a double click on a portfolio start the program,
// made without looking at what stands there. `icona` is the icon file and
// `programma` the program's full path.
void AssociaFile(platform::RegistroTipiFile& registro, const QString& icona, const QString& programma);

// The program with the file's path as its argument, in the registry's form.
QString ComandoApri(const QString& programma);

} // namespace prefs
