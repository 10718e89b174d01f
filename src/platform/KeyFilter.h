#pragma once
// Key routines in the manner of a KeyPress handler: they see the character
// code of each typed key and return it to let it through or 0 to refuse it.
// Only typed characters reach them; pasted text and editing keys do not.
#include <functional>

class QLineEdit;

namespace platform {

using KeyRoutine = std::function<int(QLineEdit* box, int key)>;

// Attaches a routine to a text box (also the editor of an editable combo box).
void AttachKeyRoutine(QLineEdit* box, KeyRoutine routine);

} // namespace platform
