#pragma once
// Key routines in the manner of a KeyPress handler: they see the character
// code of each typed key and return it to let it through or 0 to refuse it.
// Only typed characters reach them; pasted text, editing keys and shortcuts do not.
#include <functional>

class QComboBox;
class QLineEdit;

namespace platform {

using KeyRoutine = std::function<int(QLineEdit* box, int key)>;

// Attaches a routine to a text box. Given the editor of an editable combo box,
// it attaches to the combo box instead (see below).
void AttachKeyRoutine(QLineEdit* box, KeyRoutine routine);
// Attaches a routine to an editable combo box; the routine sees its editor.
// The combo box, not its editor, has the focus and receives the typed keys: it
// hands them to the editor past the editor's own filters.
void AttachKeyRoutine(QComboBox* box, KeyRoutine routine);

} // namespace platform
