#pragma once
// The program's global state and its entry routine.
#include "store/Database.h"

#include <QString>

#include <optional>

class QComboBox;
class QLineEdit;
class QWidget;

namespace Module1 {

extern store::Database dbSet;       // settings, open for the whole run
extern store::Database dbExe;       // the current portfolio
extern QString sFilePortafoglio;    // path of the portfolio, empty before the first
extern QString sErroreSequenza;     // fault text of the sequence check
extern bool bAvvioInCorso;          // from the end of the frame's load to its first activation
extern int iSceltaBenvenuto;        // the welcome window's choice: 1 new, 2 open, 3 open last
extern bool bPrimoAvvio;            // this start installed the delivered files
extern QString sCartellaProgramma;  // the program folder

// Installs the delivered files into a fresh folder, opens DataSet.qvd as dbSet
// and shows the frame. Returns once the frame's load has run.
void Main(const QString& programFolder);

// Full path of a file in the program folder.
QString FileProgramma(const QString& name);

// Colours of the first row of Colori on a window and its labels, frames,
// option buttons and picture surfaces.
void ApplicaColori(QWidget* window);

// Plays a wave file of the program folder and returns when it has ended
// (at once without the file or without an audio device).
void SuonaWave(const QString& name);
// Length of a wave file in milliseconds, 0 when it is no readable wave.
int DurataWave(const QString& path);

// The date "dd/mm/yyyy" of a day file, from the eight digits that end its name.
QString DataDaNomeFile(const QString& path);

// True only for a file that can be opened for reading.
bool FileEsiste(const QString& path);

// Net result of all closed operations (unset without a portfolio or closed operations).
std::optional<double> UtileNetto();

// Key routines: the key to let through, 0 to refuse it.
int FiltraCarattere(int key);
int SoloNumeri(const QLineEdit* box, int key, int digits, int decimals);
// The same rules on the text and caret alone (the caret: where a selection starts).
int SoloNumeri(const QString& text, int caret, int key, int digits, int decimals);

// Attach the routines above to a text box, or to an editable combo box so that
// they run on what the user types into it.
void FiltroCaratteri(QLineEdit* box);
void FiltroCaratteri(QComboBox* box);
void FiltroNumeri(QLineEdit* box, int digits, int decimals);
void FiltroNumeri(QComboBox* box, int digits, int decimals);

} // namespace Module1
