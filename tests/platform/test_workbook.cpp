// Cells of a workbook's active sheet read back from files made here with libxlsxwriter.
#include "platform/Workbook.h"

#include "support/Fixture.h"

#include <QDir>
#include <QTemporaryDir>

#include <xlsxwriter.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

class WorkbookTest : public ::testing::Test {
protected:
    // A workbook with a first sheet that is not the active one, and the sheet `fill` writes.
    QString make(const char* name, const std::function<void(lxw_workbook*, lxw_worksheet*)>& fill, bool constantMemory = false)
    {
        const QString path = dir.filePath(QString::fromLatin1(name));
        lxw_workbook_options options = {};
        options.constant_memory = constantMemory;
        lxw_workbook* wb = workbook_new_opt(path.toUtf8().constData(), &options);
        lxw_worksheet* altro = workbook_add_worksheet(wb, "Altro");
        worksheet_write_string(altro, 1, 0, "non questo", nullptr);
        lxw_worksheet* ws = workbook_add_worksheet(wb, "Foglio attivo");
        fill(wb, ws);
        worksheet_activate(ws);
        EXPECT_EQ(workbook_close(wb), LXW_NO_ERROR);
        return path;
    }
    QString a2(const QString& path) { return platform::Workbook::Text(platform::Workbook(path).Cell("A2")); }
    QTemporaryDir tmp;
    QDir dir{tmp.path()};
};

} // namespace

TEST_F(WorkbookTest, ReadsCellsAndRowsOfASheetWhateverTheyHoldAndWritesOnlyInMemory)
{
    const QString path = make("celle.xlsx", [](lxw_workbook* wb, lxw_worksheet* ws) {
        lxw_format* data = workbook_add_format(wb);
        format_set_num_format(data, "dd/mm/yy");
        lxw_format* ora = workbook_add_format(wb);
        format_set_num_format(ora, "[$-410]d mmmm yyyy h:mm");
        lxw_format* grigio = workbook_add_format(wb);
        format_set_bg_color(grigio, 0x808080);
        worksheet_write_string(ws, 0, 0, "Titolo", nullptr);
        worksheet_write_number(ws, 0, 2, 1.5, nullptr);
        worksheet_write_string(ws, 0, 3, "Quorvel Tabella operazioni chiuse", nullptr);
        worksheet_write_blank(ws, 0, 5, grigio); // a formatted cell without a value is not used
        worksheet_write_string(ws, 1, 1, "System", nullptr);
        worksheet_write_string(ws, 1, 0, "Data", nullptr);
        worksheet_write_number(ws, 1, 4, -1234.5, nullptr);
        lxw_datetime d = {2003, 1, 17, 0, 0, 0};
        worksheet_write_datetime(ws, 1, 5, &d, data);
        lxw_datetime prima = {1900, 2, 10, 9, 30, 0}; // before the 1900 system's missing leap day
        worksheet_write_datetime(ws, 1, 6, &prima, ora);
        worksheet_write_formula_num(ws, 1, 7, "=1+1.25", nullptr, 2.25);
        worksheet_write_datetime(ws, 2, 1, &d, data);
        worksheet_write_boolean(ws, 2, 0, 1, nullptr);
        worksheet_write_blank(ws, 4, 0, grigio);
        // Past the first chunk of the sheet's part: its texts are read while the sheet is.
        for (int r = 10; r < 3010; ++r) {
            worksheet_write_string(ws, static_cast<lxw_row_t>(r), 0, QByteArray::number(r).constData(), nullptr);
            worksheet_write_number(ws, static_cast<lxw_row_t>(r), 1, r, nullptr);
        }
    });
    const QByteArray prima = testing_support::FileBytes(path);
    platform::Workbook wb(path);
    // Rows of a sheet by name, up to its last used cell.
    EXPECT_EQ(wb.SheetNames(), (QStringList{"Altro", "Foglio attivo"}));
    const QList<QVariantList> rows = wb.Rows("FOGLIO ATTIVO");
    ASSERT_EQ(rows.size(), 3010);
    EXPECT_EQ(rows[0], (QVariantList{QStringLiteral("Titolo"), QVariant(), 1.5, QStringLiteral("Quorvel Tabella operazioni chiuse")}));
    EXPECT_EQ(rows[2], (QVariantList{true, QDate(2003, 1, 17)}));
    EXPECT_TRUE(rows[3].isEmpty());
    EXPECT_TRUE(rows[9].isEmpty());
    EXPECT_EQ(rows[3009], (QVariantList{QStringLiteral("3009"), 3009.0}));
    EXPECT_EQ(wb.Rows("Altro"), (QList<QVariantList>{{}, {QStringLiteral("non questo")}}));
    EXPECT_THROW(wb.Rows("Eseguiti"), platform::Failure);

    // Cells of the active sheet; the shared texts read once serve the single cells too.
    EXPECT_EQ(wb.ActiveSheetName(), "Foglio attivo");
    EXPECT_TRUE(wb.Cell("C2").isNull());
    EXPECT_TRUE(wb.Cell("A4").isNull());
    QStringList testi;
    for (const char* cella : {"A1", "A2", "b2", "D1", "E2", "F2", "G2", "H2", "C2", "A4"})
        testi << platform::Workbook::Text(wb.Cell(cella));
    EXPECT_EQ(testi, (QStringList{"Titolo", "Data", "System", "Quorvel Tabella operazioni chiuse", "-1234,5", "17/01/2003",
                                  "10/02/1900 09:30:00", "2,25", "", ""}));

    // Writes stay in memory: the file is as it was once the workbook is gone.
    {
        platform::Workbook scritto(path);
        scritto.SetCell("B2", QStringLiteral("Nuovo"));
        EXPECT_EQ(scritto.Cell("B2").toString(), "Nuovo");
        EXPECT_THROW(scritto.SetCell("2B", 1), platform::Failure);
        EXPECT_THROW(scritto.Cell("A0"), platform::Failure);
    }
    EXPECT_EQ(testing_support::FileBytes(path), prima);

    const auto write = [this](const char* name, const QByteArray& bytes) { return testing_support::WriteFile(dir.filePath(name), bytes); };
    for (const QString& bad : {write("nulla.xlsx", ""), write("testo.xlsx", "Data,Tipo\r\n17/01/2003,Buy\r\n"),
                               write("troncato.xlsx", prima.left(prima.size() / 2)), dir.filePath("manca.xlsx")})
        EXPECT_THROW(platform::Workbook{bad}, platform::Failure) << bad.toStdString();

    // Texts stored in the cell itself rather than in the shared list; a sheet without a second row.
    EXPECT_EQ(a2(make("inline.xlsx", [](lxw_workbook*, lxw_worksheet* ws) { worksheet_write_string(ws, 1, 0, "Perché sì", nullptr); },
                      true)),
              "Perché sì");
    EXPECT_EQ(a2(make("vuoto.xlsx", [](lxw_workbook*, lxw_worksheet* ws) { worksheet_write_string(ws, 0, 0, "solo A1", nullptr); })),
              "");
}
