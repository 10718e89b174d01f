#pragma once
// Every message box of the program goes through here: the application's
// name as title, the buttons and icon each place asks for.
#include <QString>

class QWidget;

namespace platform {

enum class Icon { None, Question, Information, Exclamation, Critical };
// YesNoAll adds "Sì a tutti" and "No a tutti" for a question asked once per row.
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, YesNoAll };
enum class Answer { Ok, Cancel, Yes, No, YesToAll, NoToAll };

Answer MsgBox(const QString& text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None, QWidget* parent = nullptr);

} // namespace platform
