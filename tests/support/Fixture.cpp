#include "support/Fixture.h"

#include "platform/Numbers.h"
#include "store/Delivered.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace testing_support {

ProgramFolder::ProgramFolder()
{
    if (!dir_.isValid())
        throw std::runtime_error("no temporary folder");
    store::InstallDelivered(dir_.path());
}

QString ProgramFolder::File(const QString& name) const { return QDir(dir_.path()).filePath(name); }

QString ProgramFolder::NewPortfolio(const QString& name) const
{
    const QString path = File(name);
    store::Database::CopyFile(File(store::kScratchPortfolio), path);
    return path;
}

void AddTrade(store::Database& db, const QString& data, const QString& tipo, const QString& system, const QString& cod,
              double qta, double prezzo, const QString& errore, const QString& titolo)
{
    db.Execute("INSERT INTO Eseguiti (Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo, Errore, PrezzoOttimale) VALUES ('"
               + data + "','" + tipo + "','" + system + "','" + cod + "','" + (titolo.isEmpty() ? cod + " spa" : titolo)
               + "'," + num::SqlText(qta) + "," + num::SqlText(prezzo) + "," + num::SqlText(qta * prezzo) + ",'" + errore
               + "'," + num::SqlText(prezzo) + ")");
}

QString WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    EXPECT_TRUE(f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size()) << path.toStdString();
    return path;
}

QByteArray FileBytes(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

QStringList Rows(store::Database& db, const QString& sql)
{
    QStringList out;
    store::Recordset rs = db.OpenRecordset(sql);
    while (!rs.Eof()) {
        QStringList cells;
        for (int i = 0; i < rs.FieldCount(); ++i)
            cells << num::Text(rs.Field(i));
        out << cells.join('|');
        rs.MoveNext();
    }
    return out;
}

} // namespace testing_support
