#pragma once
// Helpers for window tests.
#include <QString>
#include <QWidget>

#include <functional>

namespace testing_support {

// Runs `answer` on the next modal widget that appears (polling the event loop
// through a timer, never sleeping the thread).
void WhenModal(std::function<void(QWidget*)> answer);
// Presses the button with this text on a modal box.
void PressOnModal(const QString& buttonText, QString* seenText = nullptr);

} // namespace testing_support
