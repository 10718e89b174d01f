// Writes a few small workbooks into a folder, as the first inputs of fuzz_workbook.
#include <xlsxwriter.h>

#include <string>

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const std::string dir = argv[1];
    {
        lxw_workbook* wb = workbook_new((dir + "/testi.xlsx").c_str());
        lxw_worksheet* a = workbook_add_worksheet(wb, "Primo");
        lxw_worksheet* b = workbook_add_worksheet(wb, "OperazioniChiuse");
        worksheet_write_string(a, 1, 0, "non attivo", nullptr);
        worksheet_write_string(b, 0, 3, "Quorvel Tabella operazioni chiuse", nullptr);
        worksheet_write_string(b, 1, 0, "Data", nullptr);
        worksheet_write_string(b, 1, 1, "System", nullptr);
        worksheet_activate(b);
        workbook_close(wb);
    }
    {
        lxw_workbook* wb = workbook_new((dir + "/numeri.xlsx").c_str());
        lxw_worksheet* ws = workbook_add_worksheet(wb, nullptr);
        lxw_format* f = workbook_add_format(wb);
        format_set_num_format(f, "dd/mm/yy");
        lxw_datetime d = {2003, 1, 17, 10, 30, 0};
        worksheet_write_datetime(ws, 1, 0, &d, f);
        worksheet_write_number(ws, 1, 1, 1234.5, nullptr);
        worksheet_write_boolean(ws, 1, 2, 1, nullptr);
        worksheet_write_formula_num(ws, 1, 11, "=1+1", nullptr, 2);
        workbook_close(wb);
    }
    {
        lxw_workbook_options options = {};
        options.constant_memory = LXW_TRUE;
        lxw_workbook* wb = workbook_new_opt((dir + "/inline.xlsx").c_str(), &options);
        lxw_worksheet* ws = workbook_add_worksheet(wb, nullptr);
        worksheet_write_string(ws, 1, 0, "Perché", nullptr);
        workbook_close(wb);
    }
    return 0;
}
