#pragma once
#include "platform/Failure.h"

#include <QString>

namespace store {

// Any engine error, with the statement that caused it.
class DbError : public platform::Failure {
public:
    DbError(const QString& message, const QString& statement, int code = 0)
        : platform::Failure(QString(message + (statement.isEmpty() ? QString() : QString("\n" + statement))).toStdString()),
          message_(message), statement_(statement), code_(code)
    {
    }
    const QString& Message() const { return message_; }
    const QString& Statement() const { return statement_; }
    int Code() const { return code_; }

private:
    QString message_;
    QString statement_;
    int code_;
};

} // namespace store
