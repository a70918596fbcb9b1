#include "desktop/services/desktop_printer.h"
#include "engines/packages/file_kind.h"
#include "engines/packages/package.h"
#include "platform/files/paths.h"
#include "runs/engines.h"
#include "tests/engines/documents/document_parts.h"
#include "tests/engines/libreoffice/office_fixture.h"
#include "tests/engines/spreadsheets/workbook_parts.h"
#include "tests/engines/suite/stand_in_suite.h"
#include "tests/support/compound_files.h"

#include <windows.h>

#include <tlhelp32.h>

#include <fstream>
#include <iterator>
#include <process.h>
#include <sstream>

namespace tarvik::test {

namespace fs = std::filesystem;

namespace {

constexpr const wchar_t* child_folder = L"TARVIK_SUITE_FOLDER";

std::string journal_in(const fs::path& folder)
{
    std::ifstream file(folder / "journal.txt", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The limits are measured by what the stand-in does: with each call that it tells to hang a day has passed, with one
/// that is slow two minutes.
libreoffice::Settings hurried(const std::function<fs::path()>& folder)
{
    auto settings = office_settings();
    settings.clock = [folder] {
        std::istringstream journal(journal_in(folder()));
        libreoffice::Clock::time_point now;
        for (std::string line; std::getline(journal, line);)
            if (line.starts_with("hang")) now += std::chrono::days(1);
            else if (line.starts_with("slow")) now += std::chrono::minutes(2);
        return now;
    };
    return settings;
}

std::vector<DWORD> ids_of(const wchar_t* program)
{
    std::vector<DWORD> found;
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more; more = ::Process32NextW(snapshot, &entry))
        if (::lstrcmpiW(entry.szExeFile, program) == 0) found.push_back(entry.th32ProcessID);
    ::CloseHandle(snapshot);
    return found;
}

void end_processes_named(const wchar_t* program)
{
    for (const DWORD id : ids_of(program)) {
        const HANDLE process = ::OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id);
        ::TerminateProcess(process, 1);
        ::WaitForSingleObject(process, INFINITE);
        ::CloseHandle(process);
    }
}

/// The system's default printer until the object goes.
class DefaultPrinter {
public:
    explicit DefaultPrinter(const std::wstring& name) { set(name + L",winspool,FILE:"); }
    ~DefaultPrinter() { set({}); }
    DefaultPrinter(const DefaultPrinter&) = delete;
    DefaultPrinter& operator=(const DefaultPrinter&) = delete;

private:
    static void set(const std::wstring& device)
    {
        ::WriteProfileStringW(L"windows", L"device", device.empty() ? nullptr : device.c_str());
    }
};

fs::path folder_of_parent()
{
    wchar_t place[MAX_PATH] = {};
    ::GetEnvironmentVariableW(child_folder, place, MAX_PATH);
    return place;
}

} // namespace

class Suite : public OfficeTest {
protected:
    Suite() : OfficeTest(settings()) { ::SetEnvironmentVariableW(child_folder, folder.path().c_str()); }

    libreoffice::Settings settings()
    {
        return hurried([this] { return folder.path(); });
    }
    std::string journal() const { return journal_in(folder.path()); }

    /// Empty when the journal has all of these beginnings of lines in this order, else the first that is missing.
    std::string missing(const std::vector<std::string>& lines)
    {
        const std::string all = "\n" + journal();
        std::size_t at = 0;
        for (const auto& line : lines) {
            at = all.find("\n" + line, at);
            if (at == std::string::npos) return line + " in" + all;
            ++at;
        }
        return {};
    }

    void make_old_workbook(const Text& text)
    {
        folder.write("t.xls", older_with("Workbook",
                                         make_package(simple_parts("<row r=\"1\"><c r=\"A1\" t=\"inlineStr\"><is><t>" +
                                                                   to_utf8(text) + "</t></is></c></row>"))));
    }

    std::string cell_in(const std::string& name, int row, int column)
    {
        const auto bytes = folder.read(name);
        folder.write("looked-at.xlsx", file_kind(bytes) == FileKind::Package ? bytes : packed_in(bytes));
        auto application = make_engines(Engine::Ooxml, files, printer, office)->create_spreadsheet();
        return to_utf8(application->open(U"looked-at.xlsx").worksheet(1).cell(row, column));
    }

    void write_first_cell(const Text& text, TextView saved_as = U"t.xls")
    {
        auto application = engines->create_spreadsheet();
        auto& workbook = application->open(U"t.xls");
        workbook.worksheet(1).set_cell(1, 1, text);
        workbook.save_as(saved_as);
        workbook.close(true);
    }

    std::unique_ptr<OfficeEngines> engines = make_engines(Engine::Auto, files, printer, office);
};

TEST_F(Suite, a_workbook_of_the_older_format_is_converted_filled_and_converted_back)
{
    make_old_workbook(U"甲");
    {
        auto application = engines->create_spreadsheet();
        auto& workbook = application->open(U"t.xls");
        auto& sheet = workbook.worksheet(1);
        EXPECT_EQ(to_utf8(sheet.cell(1, 1)), "甲");
        sheet.set_cell(1, 2, Text(U"=1+1"));
        sheet.set_cell(2, 2, Text(U"'a\r\n😀"));
        workbook.save_as(U"u.xls");
        sheet.set_cell(1, 1, Text(U"乙"));
        workbook.save_as(U"v.XLS");
        workbook.save_as(U"w.xlsx");
        workbook.close(true);
    }
    EXPECT_EQ(missing({"started", "Application.DisplayAlerts = 0", "Application.AutomationSecurity = 3",
                       "Workbooks.Open(read.xls, 0, -1, missing, , , -1, missing, missing, 0, 0, missing, 0)",
                       "Workbook.SaveAs(written.xlsx, 51)", "Workbook.Close(0)", "Workbooks.Open(read.xlsx, 0, -1,",
                       "Workbook.SaveAs(written.xls, 56)", "Workbook.Close(0)", "Workbook.SaveAs(written.xls, 56)"}),
              "");
    EXPECT_EQ(journal().find("Visible"), std::string::npos) << "it is never shown";
    EXPECT_EQ(cell_in("u.xls", 1, 1) + cell_in("u.xls", 1, 2) + cell_in("u.xls", 2, 2), "甲=1+1'a\n😀");
    EXPECT_EQ(cell_in("v.XLS", 1, 1) + cell_in("w.xlsx", 1, 1) + cell_in("t.xls", 1, 1), "乙乙甲");
    EXPECT_EQ(file_kind(folder.read("u.xls")), FileKind::Workbook);
    EXPECT_EQ(file_kind(folder.read("w.xlsx")), FileKind::Package);
}

TEST_F(Suite, macros_go_with_their_workbook)
{
    folder.write("t.xls", older_with("Workbook", make_package(rich_parts()), true));
    write_first_cell(U"甲");
    EXPECT_EQ(
        missing({"Workbook.SaveAs(written.xlsm, 52)", "Workbooks.Open(read.xlsm,", "Workbook.SaveAs(written.xls, 56)"}),
        "");
    EXPECT_TRUE(has_macros(packed_in(folder.read("t.xls"))));
}

TEST_F(Suite, a_document_is_filled_and_keeps_its_format)
{
    folder.write("t.doc", older_with("WordDocument", make_package(document_parts(plain_table(3, 2)))));
    folder.write("图", png(400, 100, 3'937));
    auto application = engines->create_document();
    auto& document = application->open(U"t.doc");
    document.set_cell_text(1, 1, U"甲\r\n乙😀");
    document.add_picture(2, 1, U"图");
    document.save_as(U"u.docx");
    document.close();
    EXPECT_EQ(file_kind(folder.read("u.docx")), FileKind::Document);
    const ooxml::Package package(packed_in(folder.read("u.docx")));
    EXPECT_EQ(texts_of(package.part(main_part)).at(1), "乙😀");
    EXPECT_NE(package.part(main_part).find("<a:blip"), std::string::npos);
    EXPECT_EQ(missing({"Documents.Open(read.doc, 0, -1, 0, , , 0, , )", "Document.SaveAs(written.docx, 12)",
                       "Documents.Open(read.docx,", "Document.SaveAs(written.doc, 0)", "Document.Close(0)"}),
              "");
}

TEST_F(Suite, formulas_are_calculated_whatever_they_show)
{
    const auto package = make_package(simple_parts(""));
    EXPECT_EQ(libreoffice::recalculated(office, package), package);
    libreoffice::recalculated(office, make_package(rich_parts()));
    EXPECT_EQ(missing({"Workbooks.Open(read.xlsx,", "Application.CalculateFull()", "Workbook.SaveAs(written.xlsx, 51)",
                       "Workbook.Close(0)", "Workbooks.Open(read.xlsm,"}),
              "");
}

TEST_F(Suite, what_is_printed_goes_to_the_default_printer)
{
    folder.write("T.XLSX", make_package(simple_parts("")));
    folder.write("t.docx", make_package(document_parts("")));
    for (const auto* name : {"T.XLSX", "t.docx"}) {
        auto file = office.open(folder.path() / name);
        ASSERT_TRUE(file);
        file.call([](libreoffice::OpenFile& held) { held.print({}); });
    }
    EXPECT_EQ(missing({"Workbooks.Open(T.XLSX,", "Worksheet.PrintOut()", "Document.PrintOut(0)"}), "");
}

// The printer is asked for the name that the system has for the default one; the paper is the suite's own affair.
TEST_F(Suite, the_window_prints_by_the_suite_and_says_what_hinders_it)
{
    folder.write("202403 双河-015.xlsx", make_package(simple_parts("")));
    const auto print = [&](const std::string& order) {
        folder.write("orders.txt", order);
        libreoffice::LibreOffice own(settings());
        const auto path = folder.path() / path_of(U"202403 双河-015.xlsx");
        return failure_of([&] { DesktopPrinter(own).print(path, U"202403 双河-015.xlsx"); });
    };
    const std::string told = " 请注意：\r\n文件 202403 双河-015.xlsx 没有打印：";
    EXPECT_EQ(print(""), told + "没有找到默认打印机。");
    EXPECT_EQ(journal(), "") << "nothing is started for it";
    const DefaultPrinter printer_of_the_test(L"甲 printer");
    EXPECT_EQ(default_printer(), "甲 printer");
    EXPECT_EQ(print(""), "no failure");
    // The application ends by itself, a moment after it was asked to.
    EXPECT_TRUE(comes_true([&] { return missing({"Application.Quit()", "ended"}).empty(); }));
    EXPECT_EQ(missing({"Workbooks.Open(202403 双河-015.xlsx, 0,", "Worksheet.PrintOut()", "Workbook.Close(0)",
                       "Application.Quit()", "ended"}),
              "");
    EXPECT_EQ(print("fail PrintOut"), told + "Office 拒绝了操作（磁盘已满）。");
    EXPECT_EQ(print("hang PrintOut"), told + "Office 没有响应，已经将它结束，请重试。默认打印机可能在等待文件名"
                                             "（例如 Microsoft Print to PDF），请换一台打印机。");
    remove_stand_in();
    EXPECT_EQ(print(""), told + "没有找到 Excel；请安装 Microsoft Office。");
}

TEST_F(Suite, what_goes_wrong_is_one_message_and_leaves_neither_a_process_nor_a_changed_file)
{
    struct Row {
        const char* order;
        const char* failure;
    };
    constexpr Row rows[] = {
        {"busy Open 3\nbusy SaveAs 1\nbusy Quit 1\n", "no failure"},
        {"slow DisplayAlerts 1", "no failure"},
        {"fail Hwnd", "no failure"},
        {"hang Quit", "no failure"},
        {"fail SaveAs", "无法处理工作簿“t.xls”：Office 拒绝了操作（磁盘已满）。"},
        {"fail Open", "无法处理工作簿“t.xls”：Office 拒绝了操作（磁盘已满）。"},
        {"fail DisplayAlerts", "无法处理工作簿“t.xls”：Office 拒绝了操作（磁盘已满）。"},
        {"die SaveAs", "无法处理工作簿“t.xls”：Office 意外退出，请重试。"},
        {"die start", "无法处理工作簿“t.xls”：Excel 无法启动（0x"},
        {"hang Open", "无法处理工作簿“t.xls”：Office 没有响应，已经将它结束，请重试。"},
        {"slow SaveAs 1", "无法处理工作簿“t.xls”：Office 没有响应，已经将它结束，请重试。"},
        {"hang SaveAs", "无法处理工作簿“t.xls”：Office 没有响应，已经将它结束，请重试。"},
    };
    for (const auto& row : rows) {
        make_old_workbook(U"甲");
        const auto bytes = folder.read("t.xls");
        folder.write("orders.txt", row.order);
        const std::string expected = row.failure;
        const auto failure = failure_of([&] {
            libreoffice::LibreOffice own(settings());
            engines = make_engines(Engine::Auto, files, printer, own);
            write_first_cell(U"乙");
            engines.reset();
        });
        EXPECT_EQ(failure.substr(0, expected.size()), expected) << row.order;
        EXPECT_EQ(folder.read("t.xls") == bytes, expected != "no failure") << row.order;
        EXPECT_TRUE(comes_true([] { return ids_of(L"EXCEL.EXE").empty(); })) << row.order;
    }
    EXPECT_NE(journal().find("slow DisplayAlerts"), std::string::npos);
}

// A clerk's double click may open a workbook in an application that is at hand, ours among them.
TEST_F(Suite, an_application_that_holds_a_clerks_workbook_is_shown_and_left_alone)
{
    make_old_workbook(U"甲");
    folder.write("orders.txt", "obey clerk");
    {
        libreoffice::LibreOffice own(settings());
        engines = make_engines(Engine::Auto, files, printer, own);
        write_first_cell(U"乙");
        engines.reset();
    }
    EXPECT_EQ(cell_in("t.xls", 1, 1), "乙");
    EXPECT_EQ(missing({"Workbook.Close(0)", "Workbooks.Count()", "Application.Visible = -1"}), "");
    EXPECT_EQ(journal().find("Quit"), std::string::npos);
    ::Sleep(200);
    EXPECT_EQ(ids_of(L"EXCEL.EXE").size(), 1U);
    end_processes_named(L"EXCEL.EXE");
}

TEST(SuiteChild, DISABLED_gives_a_start_up)
{
    Files files(folder_of_parent());
    RecordedPrinter printer;
    libreoffice::LibreOffice office(hurried(folder_of_parent));
    const auto engines = make_engines(Engine::Auto, files, printer, office);
    EXPECT_EQ(failure_of([&] { engines->create_spreadsheet()->open(U"t.xls"); }),
              "无法处理工作簿“t.xls”：Office 没有响应，已经将它结束，请重试。它可能停在激活、登录或安全模式的窗口上："
              "请先自己打开一次 Excel，回答它的问题，再关闭它。");
}

// The system goes on with a start that was given up for as long as the program runs: so that is another program.
TEST_F(Suite, a_start_that_hangs_is_given_up_and_does_not_hold_the_program)
{
    make_old_workbook(U"甲");
    folder.write("orders.txt", "hang start");
    EXPECT_EQ(::_wspawnl(_P_WAIT, program_file().c_str(), L"test", L"--gtest_also_run_disabled_tests",
                         L"--gtest_filter=SuiteChild.*", nullptr),
              0);
    EXPECT_NE(journal().find("hang start"), std::string::npos);
    end_processes_named(L"EXCEL.EXE"); // its process is not known before it has started
}

} // namespace tarvik::test
