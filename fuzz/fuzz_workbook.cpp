// libFuzzer target for the workbook reader (the probe's cells, the imports' rows):
// an input is the bytes of a .xlsx file.
#include "platform/Failure.h"
#include "platform/Workbook.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static QTemporaryDir* dir = new QTemporaryDir;
    const QString path = dir->filePath(QStringLiteral("fuzz.xlsx"));
    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly))
            return 0;
        f.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    }
    // A file that is no workbook fails in one known way; anything else is a finding.
    try {
        platform::Workbook wb(path);
        for (const char* cell : {"A2", "B2", "A1", "L2"})
            platform::Workbook::Text(wb.Cell(QString::fromLatin1(cell)));
        for (const QString& sheet : wb.SheetNames())
            wb.Rows(sheet);
    } catch (const platform::Failure&) {
    }
    return 0;
}
