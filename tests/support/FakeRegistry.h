#pragma once
// A registry of file types that only remembers what was written to it, in order.
#include "platform/Registro.h"

#include <QStringList>

namespace testing_support {

class FakeRegistry final : public platform::RegistroTipiFile {
public:
    // "key|value name|text or number|data", and "notify" when the desktop is told.
    QStringList writes;

    void ScriviRegistroTesto(const QString& key, const QString& name, const QString& text) override
    {
        writes << key + "|" + name + "|text|" + text;
    }
    void ScriviRegistroNumero(const QString& key, const QString& name, std::uint32_t number) override
    {
        writes << key + "|" + name + "|number|" + QString::number(number);
    }
    void Notifica() override { writes << "notify"; }
};

} // namespace testing_support
