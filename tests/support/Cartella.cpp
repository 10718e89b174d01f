#include "support/Cartella.h"

#include "platform/Numbers.h"

#include <xlsxwriter.h>

#include <gtest/gtest.h>

namespace testing_support {

QString WriteWorkbook(const QString& path, const QList<Foglio>& fogli)
{
    lxw_workbook* wb = workbook_new(path.toUtf8().constData());
    lxw_format* data = workbook_add_format(wb);
    format_set_num_format(data, "dd/mm/yy");
    for (const auto& [nome, righe] : fogli) {
        lxw_worksheet* ws = workbook_add_worksheet(wb, nome.toUtf8().constData());
        for (int r = 0; r < righe.size(); ++r)
            for (int c = 0; c < righe[r].size(); ++c) {
                const QString& v = righe[r][c];
                const auto rr = static_cast<lxw_row_t>(r);
                const auto cc = static_cast<lxw_col_t>(c);
                if (v.startsWith('#')) {
                    worksheet_write_number(ws, rr, cc, v.mid(1).toDouble(), nullptr);
                } else if (v.startsWith('@')) {
                    const QDate d = num::ParseShortDate(v.mid(1));
                    lxw_datetime dt = {d.year(), d.month(), d.day(), 0, 0, 0};
                    worksheet_write_datetime(ws, rr, cc, &dt, data);
                } else if (!v.isEmpty()) {
                    worksheet_write_string(ws, rr, cc, v.toUtf8().constData(), nullptr);
                }
            }
    }
    EXPECT_EQ(workbook_close(wb), LXW_NO_ERROR) << path.toStdString();
    return path;
}

} // namespace testing_support
