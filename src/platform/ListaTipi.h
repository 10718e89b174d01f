#pragma once
// A combo box of types that shows any type a row holds, also one its list lacks (a row
// edited by hand), while the user only picks from the list.
class QComboBox;
class QString;

namespace platform {

// Makes `combo` such a box: its text can't be typed, a click on it opens the list.
void ListaTipi(QComboBox* combo);
// Shows `text`: the item when the list has it, else the text alone; the list stays as it is.
void MostraTipo(QComboBox* combo, const QString& text);

} // namespace platform
