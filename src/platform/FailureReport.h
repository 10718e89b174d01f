#pragma once
// The general failure report: an error that no routine handles reaches the
// event dispatch, is shown in the dialog "FailureReport", and the program ends.
#include <QApplication>

#include <exception>

namespace platform {

class Application : public QApplication {
    Q_OBJECT
public:
    Application(int& argc, char** argv);
    bool notify(QObject* receiver, QEvent* event) override;
    // True once a failure has been reported: no further event is dispatched.
    bool Failed() const { return failed_; }

    // Shows the report for an error and asks the event loops to end with code 1.
    void ReportFailure(const std::exception_ptr& error, const QString& where);

private:
    bool failed_ = false;
};

// Text of an error, with the statement for an engine error.
QString FailureText(const std::exception_ptr& error);
// Shows the modal report dialog (named "FailureReport").
void ShowFailureReport(const QString& text, const QString& where);

} // namespace platform
