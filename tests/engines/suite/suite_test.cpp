#include "desktop/services/default_printer.h"
#include "desktop/services/desktop_printer.h"
#include "platform/files/path_text.h"
#include "platform/files/system_paths.h"
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
#include <sstream>
#include <thread>

namespace tarvik::test {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

namespace {

constexpr const wchar_t* child_folder = L"TARVIK_SUITE_FOLDER";

std::string journal_in(const fs::path& folder)
{
    std::ifstream file(folder / "journal.txt", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The limits are measured by what the stand-in does: with each call that it tells to hang, a day has passed.
libreoffice::Settings hurried(const std::function<fs::path()>& folder)
{
    auto settings = office_settings();
    settings.clock = [folder] {
        std::istringstream journal(journal_in(folder()));
        libreoffice::Worker::Clock::time_point now;
        for (std::string line; std::getline(journal, line);)
            if (line.starts_with("hang")) now += std::chrono::days(1);
        return now;
    };
    return settings;
}

bool comes_true(const std::function<bool()>& condition)
{
    constexpr int patience = 10'000; // some minutes: it only ends a test that has failed
    for (int attempt = 0; attempt < patience; ++attempt) {
        if (condition()) return true;
        std::this_thread::sleep_for(milliseconds(20));
    }
    return false;
}

int processes_named(const wchar_t* program)
{
    int found = 0;
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more; more = ::Process32NextW(snapshot, &entry))
        if (::lstrcmpiW(entry.szExeFile, program) == 0) ++found;
    ::CloseHandle(snapshot);
    return found;
}

/// A process that runs until the object goes.
class RunningProgram {
public:
    explicit RunningProgram(std::wstring words)
    {
        STARTUPINFOW how{};
        how.cb = sizeof(how);
        if (!::CreateProcessW(nullptr, words.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how, &process_))
            ADD_FAILURE() << "it does not start";
    }
    ~RunningProgram()
    {
        ::TerminateProcess(process_.hProcess, 1);
        ::WaitForSingleObject(process_.hProcess, INFINITE);
        ::CloseHandle(process_.hThread);
        ::CloseHandle(process_.hProcess);
    }
    /// What it ends with.
    DWORD status() const
    {
        DWORD ended_with = 0;
        ::WaitForSingleObject(process_.hProcess, INFINITE);
        ::GetExitCodeProcess(process_.hProcess, &ended_with);
        return ended_with;
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

private:
    PROCESS_INFORMATION process_{};
};

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

std::wstring quoted(const fs::path& path)
{
    return L"\"" + path.native() + L"\" ";
}

/// Has a test of this program run in a process of its own.
std::wstring child_test(const fs::path& name)
{
    return quoted(program_file()) + L"--gtest_also_run_disabled_tests --gtest_filter=SuiteChild." + name.native();
}

fs::path folder_of_parent()
{
    wchar_t place[MAX_PATH] = {};
    ::GetEnvironmentVariableW(child_folder, place, MAX_PATH);
    return place;
}

} // namespace

class Suite : public OfficeTest {
protected:
    Suite() : OfficeTest(hurried([this] { return folder.path(); }))
    {
        ::SetEnvironmentVariableW(child_folder, folder.path().c_str());
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

    void make_package_of(const std::string& rows) { folder.write("t.xlsx", make_package(simple_parts(rows))); }

    std::string cell_in(TextView name, int row, int column)
    {
        auto application = make_engines(Engine::Ooxml, files, printer, office)->create_spreadsheet();
        return to_utf8(application->open(name).worksheet(1).cell(row, column));
    }

    void raise_first_cell()
    {
        auto application = engines.create_spreadsheet();
        auto& workbook = application->open(U"t.xlsx");
        auto& sheet = workbook.worksheet(1);
        sheet.set_cell(1, 1, std::get<double>(sheet.value(1, 1)) + 1);
        workbook.close(true);
    }
};

TEST_F(Suite, a_workbook_of_the_older_format_is_filled_without_a_question_and_the_application_ends)
{
    folder.write("t.xls", file_with_stream("Workbook"));
    const auto by_content = make_engines(Engine::Auto, files, printer, office);
    auto application = by_content->create_spreadsheet();
    application->set_visible(true);
    auto& workbook = application->open(U"t.xls");
    auto& sheet = workbook.worksheet(1);
    const Text long_text(2'000, U'长');
    sheet.set_cell(1, 1, long_text);
    sheet.set_cell(1, 2, Text(U"=1+1"));
    sheet.set_cell(2, 1, Text(U"00123"));
    sheet.set_cell(2, 2, Text(U"'a\r\n😀"));
    workbook.close(true);
    EXPECT_EQ(missing({"started", "Application.Visible = 0", "Application.DisplayAlerts = 0",
                       "Application.AutomationSecurity = 3", "Workbooks.Open(1-read.xls, 0, 0, missing, , , -1)",
                       "Application.Visible = -1", "Range.Value2 = table of 4", "Workbook.SaveAs(written1.xls, 56)",
                       "Workbook.Close(0)", "Application.Quit()", "ended"}),
              "");
    EXPECT_TRUE(comes_true([] { return processes_named(L"EXCEL.EXE") == 0; }));
    EXPECT_EQ(cell_in(U"t.xls", 1, 1), to_utf8(long_text));
    EXPECT_EQ(cell_in(U"t.xls", 1, 2) + cell_in(U"t.xls", 2, 1) + cell_in(U"t.xls", 2, 2), "=1+100123'a\n😀");
}

TEST_F(Suite, a_document_is_filled_and_keeps_its_format)
{
    folder.write("t.doc", file_with_stream("WordDocument"));
    const auto picture = png(400, 100, 3'937);
    folder.write("图.png", picture);
    auto application = engines.create_document();
    auto& document = application->open(U"t.doc");
    document.set_cell_text(1, 1, U"甲\r\n乙😀");
    document.set_cell_text(3, 2, U"丙");
    EXPECT_EQ(failure_of([&] { document.set_cell_text(4, 1, U"x"); }),
              "无法处理文档“t.doc”：第一个表格没有第 4 行、第 1 列的单元格。");
    document.add_picture(1, 1, U"图.png");
    document.add_picture(2, 1, U"图.png");
    document.save_as(U"u.doc");
    document.close();
    const auto size = "[" + std::to_string(picture.size()) + " bytes]";
    EXPECT_EQ(folder.read("u.doc"), "PK\x03\x04\n1,1: 甲\v乙😀\r" + size + "\n2,1: " + size + "\n3,2: 丙\n");
    EXPECT_EQ(
        missing({"Application.DisplayAlerts = 0", "Documents.Open(1-read.doc, 0, 0, 0, , , 0, , )",
                 "InlineShapes.AddPicture(picture1, 0, -1, object)", "InlineShape.Width = 189",
                 "Document.SaveAs(written1.doc, 0, 0, , 0)", "Document.Close(0)", "Application.Quit(0)", "ended"}),
        "");
}

TEST_F(Suite, what_is_printed_goes_to_the_default_printer)
{
    folder.write("T.XLSX", make_package(simple_parts("")));
    folder.write("t.docx", "PK\x03\x04");
    for (const auto* name : {"T.XLSX", "t.docx"}) {
        auto file = office.open(folder.path() / name);
        ASSERT_TRUE(file);
        file.call([](libreoffice::OpenFile& held) { held.print({}); });
    }
    EXPECT_EQ(missing({"Workbooks.Open(T.XLSX,", "Worksheet.PrintOut()", "ended", "Document.PrintOut(0)", "ended"}),
              "");
}

// The printer is asked for the name that the system has for the default one; the paper is the suite's own affair.
TEST_F(Suite, the_window_prints_by_the_suite_and_tells_when_there_is_no_printer)
{
    folder.write("202403 双河-015.xlsx", make_package(simple_parts("")));
    DesktopPrinter desktop(office);
    const auto print = [&] {
        desktop.print(folder.path() / path_of(U"202403 双河-015.xlsx"), U"202403 双河-015.xlsx");
    };
    const std::string told = " 请注意：\r\n文件 202403 双河-015.xlsx 没有打印：";
    EXPECT_EQ(failure_of(print), told + "没有找到默认打印机。");
    EXPECT_EQ(journal(), "") << "nothing is started for it";
    const DefaultPrinter printer_of_the_test(L"甲 printer");
    EXPECT_EQ(default_printer(), "甲 printer");
    print();
    EXPECT_EQ(missing({"Workbooks.Open(202403 双河-015.xlsx, 0,", "Worksheet.PrintOut()", "Workbook.Close(0)",
                       "Application.Quit()", "ended"}),
              "");
    folder.write("orders.txt", "fail PrintOut");
    EXPECT_EQ(failure_of(print), told + "Office 拒绝了操作（磁盘已满）。");
    remove_stand_in();
    EXPECT_EQ(failure_of(print), told + "没有找到 Excel；请安装 Microsoft Office。");
}

TEST_F(Suite, a_busy_application_is_asked_again)
{
    make_package_of("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
    folder.write("orders.txt", "busy Open 3\nbusy Value2 2\nbusy SaveAs 1\nbusy Quit 1\n");
    raise_first_cell();
    EXPECT_EQ(cell_in(U"t.xlsx", 1, 1), "2");
    EXPECT_EQ(missing({"busy Open", "busy Open", "busy Open", "Workbooks.Open", "busy Value2", "busy Value2",
                       "Range.Value2", "busy SaveAs", "Workbook.SaveAs", "busy Quit", "Application.Quit", "ended"}),
              "");
}

TEST_F(Suite, what_goes_wrong_is_one_message_and_leaves_neither_a_process_nor_a_changed_file)
{
    struct Row {
        const char* order;
        const char* failure;
    };
    constexpr Row rows[] = {
        {"fail SaveAs", "无法处理工作簿“t.xlsx”：Office 拒绝了操作（磁盘已满）。"},
        {"fail Open", "无法处理工作簿“t.xlsx”：Office 拒绝了操作（磁盘已满）。"},
        {"fail DisplayAlerts", "无法处理工作簿“t.xlsx”：Office 拒绝了操作（磁盘已满）。"},
        {"die SaveAs", "无法处理工作簿“t.xlsx”：Office 意外退出，请重试。"},
        {"die start", "无法处理工作簿“t.xlsx”：Excel 无法启动（0x"},
        {"hang Value2", "无法处理工作簿“t.xlsx”：Office 没有响应，已经将它结束，请重试。"},
        {"hang Quit", "no failure"},
    };
    fs::create_directory(folder.path() / "user");
    folder.write("user/orders.txt", "hang start");
    const RunningProgram of_the_user(quoted(stand_in_program(L"EXCEL.EXE")) + quoted(folder.path() / "user"));
    ASSERT_TRUE(comes_true([&] { return fs::exists(folder.path() / "user/journal.txt"); }));
    make_package_of("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
    const auto bytes = folder.read("t.xlsx");
    for (const auto& row : rows) {
        folder.write("t.xlsx", bytes);
        folder.write("orders.txt", row.order);
        const std::string expected = row.failure;
        EXPECT_EQ(failure_of([&] { raise_first_cell(); }).substr(0, expected.size()), expected) << row.order;
        EXPECT_EQ(folder.read("t.xlsx") == bytes, expected != "no failure") << row.order;
        EXPECT_TRUE(comes_true([] { return processes_named(L"EXCEL.EXE") == 1; })) << row.order;
        folder.write("orders.txt", "");
    }
    folder.write("t.xlsx", bytes);
    raise_first_cell();
    EXPECT_EQ(cell_in(U"t.xlsx", 1, 1), "2");
    remove_stand_in();
    EXPECT_EQ(failure_of([&] { raise_first_cell(); }),
              "无法处理工作簿“t.xlsx”：没有找到 Excel；请安装 Microsoft Office。");
}

TEST(SuiteChild, DISABLED_holds_a_workbook_open)
{
    libreoffice::LibreOffice office(office_settings());
    const auto file = office.open_workbook(folder_of_parent() / "t.xlsx");
    ::Sleep(INFINITE);
}

TEST(SuiteChild, DISABLED_starts_twice)
{
    libreoffice::LibreOffice office(office_settings());
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(office.open(folder_of_parent() / "t.xlsx"));
}

TEST(SuiteChild, DISABLED_gives_a_start_up)
{
    DiskFiles files(folder_of_parent());
    RecordedPrinter printer;
    libreoffice::LibreOffice office(hurried(folder_of_parent));
    LibreOfficeEngines engines(office, files, printer);
    EXPECT_EQ(failure_of([&] { engines.create_spreadsheet()->open(U"t.xlsx"); }),
              "无法处理工作簿“t.xlsx”：Office 没有响应，已经将它结束，请重试。");
}

TEST_F(Suite, nothing_is_left_behind_when_the_program_is_killed)
{
    make_package_of("");
    {
        const RunningProgram child(child_test("DISABLED_holds_a_workbook_open"));
        ASSERT_TRUE(comes_true([&] { return journal().find("Workbook.FileFormat") != std::string::npos; }));
        EXPECT_EQ(processes_named(L"EXCEL.EXE"), 1);
    }
    EXPECT_TRUE(comes_true([] { return processes_named(L"EXCEL.EXE") == 0; }));
}

TEST_F(Suite, two_programs_that_start_it_at_once_keep_their_processes_apart)
{
    make_package_of("");
    const RunningProgram one(child_test("DISABLED_starts_twice")), other(child_test("DISABLED_starts_twice"));
    EXPECT_EQ(one.status() + other.status(), 0U);
    EXPECT_TRUE(comes_true([] { return processes_named(L"EXCEL.EXE") == 0; }));
}

// The system goes on with a start that was given up for as long as the program runs: so that is another program.
TEST_F(Suite, a_start_that_hangs_is_given_up_and_does_not_hold_the_program)
{
    make_package_of("");
    folder.write("orders.txt", "hang start");
    EXPECT_EQ(RunningProgram(child_test("DISABLED_gives_a_start_up")).status(), 0U);
    EXPECT_NE(journal().find("hang start"), std::string::npos);
    EXPECT_TRUE(comes_true([] { return processes_named(L"EXCEL.EXE") == 0; }));
}

} // namespace tarvik::test
