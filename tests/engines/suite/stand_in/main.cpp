#include "engines/packages/file_kind.h"
#include "platform/files/path_text.h"
#include "tests/engines/suite/stand_in/served_object.h"
#include "tests/engines/suite/stand_in_suite.h"

#include <fstream>
#include <iterator>
#include <memory>
#include <objbase.h>
#include <shellapi.h>

/// Each rule names the page of the suite's own reference that states it.
namespace tarvik::test {

namespace {

namespace fs = std::filesystem;

constexpr HRESULT refused = static_cast<HRESULT>(0x800a03ec);

/// "XlFileFormat enumeration (Excel)", "WdSaveFormat enumeration (Word)".
struct Format {
    int number;
    std::wstring_view extension;
    bool is_older, with_macros;
};
constexpr Format workbook_formats[] = {
    {51, L".xlsx", false, false}, {52, L".xlsm", false, true}, {56, L".xls", true, false}};
constexpr Format document_formats[] = {
    {12, L".docx", false, false}, {13, L".docm", false, true}, {0, L".doc", true, false}};

struct Kind {
    Server& server;
    bool is_workbook;

    std::span<const Format> formats() const { return is_workbook ? workbook_formats : document_formats; }
    std::string stream() const { return is_workbook ? "Workbook" : "WordDocument"; }
};

fs::path path_in(const ComValue& value)
{
    const VARIANT& raw = value.raw();
    if (raw.vt != VT_BSTR) throw Refused{DISP_E_TYPEMISMATCH, L"no path"};
    return {std::wstring(raw.bstrVal, ::SysStringLen(raw.bstrVal))};
}

std::string bytes_of(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw Refused{refused, L"找不到文件"};
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A name must say what is in the file ("Error message when you open a file: the file format or file extension is not
/// valid").
std::string package_of(const fs::path& path, std::span<const Format> formats)
{
    const auto bytes = bytes_of(path);
    const bool is_older = file_kind(bytes) != FileKind::Package;
    const auto extension = path_of(lower(text_of(path.extension()))).native();
    for (const auto& format : formats)
        if (extension == format.extension && format.is_older == is_older &&
            (is_older || format.with_macros == has_macros(bytes)))
            return is_older ? packed_in(bytes) : bytes;
    throw Refused{refused, L"文件格式或文件扩展名无效"};
}

ComValue nothing(const Call& /*call*/)
{
    return {};
}

// "Workbook.SaveAs method (Excel)", "Document.SaveAs2 method (Word)": the file held open is then the new one.
ComValue save(const Kind& kind, const std::string& package, const Call& call)
{
    const auto path = path_in(call.arguments.at(0));
    for (const auto& format : kind.formats()) {
        if (format.number != call.arguments.at(1).as_count()) continue;
        if (path.extension() != format.extension) throw Refused{refused, L"此扩展名不能与所选文件类型一起使用"};
        std::ofstream(path, std::ios::binary) << (format.is_older ? older_with(kind.stream(), package) : package);
        return {};
    }
    throw Refused{refused, L"无此格式"};
}

// "Workbooks.Open method (Excel)", "Documents.Open method (Word)": who does not ask to read only is asked for the
// password of a file that is reserved for writing.
ComValue open(const Kind& kind, const Call& call)
{
    Server& server = kind.server;
    const bool reads_only = call.arguments.at(2).raw().vt == VT_BOOL && call.arguments.at(2).raw().boolVal;
    if (!reads_only) ::Sleep(INFINITE);
    const auto package = std::make_shared<std::string>(package_of(path_in(call.arguments.at(0)), kind.formats()));
    ++server.open_files;
    const auto window = [&server](const Call&) { // "Window.Hwnd property (Word)"
        return ServedObject::make(server, "Window",
                                  {{L"Hwnd", [&server](const Call&) { return server.window_value(); }}});
    };
    const auto sheet = [&server](const Call&) {
        return ServedObject::make(server, "Worksheet", {{L"PrintOut", nothing}});
    };
    return ServedObject::make(
        server, kind.is_workbook ? "Workbook" : "Document",
        {{L"SaveAs", [kind, package](const Call& saving) { return save(kind, *package, saving); }},
         {L"ActiveWindow", window},
         {L"Worksheets",
          [&server, sheet](const Call&) {
              return ServedObject::make(server, "Worksheets", {{L"Item", sheet}});
          }},
         {L"PrintOut", nothing},
         {L"Close", [&server](const Call&) {
              if (!server.orders.is_for("clerk")) --server.open_files; // a clerk's file is opened meanwhile
              return ComValue();
          }}});
}

// "Application.DisplayAlerts property (Excel)" and "Application.Quit method (Excel)": without alerts it quits without
// saving. "Application.UserControl property (Excel)": one that is shown is the user's.
ComValue make_application(Server& server, bool for_workbooks)
{
    const Kind kind{server, for_workbooks};
    const auto files = [kind](const Call&) {
        return ServedObject::make(kind.server, kind.is_workbook ? "Workbooks" : "Documents",
                                  {{L"Count", [kind](const Call&) { return ComValue(kind.server.open_files.load()); }},
                                   {L"Open", [kind](const Call& call) { return open(kind, call); }}});
    };
    return ServedObject::make(
        server, "Application",
        {{for_workbooks ? L"Workbooks" : L"Documents", files},
         {L"Visible",
          [&server](const Call& call) {
              server.is_visible = call.arguments.at(0).raw().boolVal != 0;
              return ComValue();
          }},
         {L"DisplayAlerts", nothing},
         {L"AutomationSecurity", nothing},
         {L"CalculateFull", nothing},
         {for_workbooks ? L"Hwnd" : L"none", [&server](const Call&) { return server.window_value(); }},
         {L"Quit", [&server](const Call&) {
              server.has_quit = true;
              return ComValue();
          }}});
}

class Factory final : public IClassFactory {
public:
    Factory(Server& server, bool for_workbooks) : server_(server), for_workbooks_(for_workbooks) {}

    HRESULT __stdcall QueryInterface(REFIID id, void** object) override
    {
        const bool is_known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IClassFactory);
        *object = is_known ? this : nullptr;
        return is_known ? S_OK : E_NOINTERFACE;
    }
    ULONG __stdcall AddRef() override { return 2; } // it lives as long as the program
    ULONG __stdcall Release() override { return 1; }
    HRESULT __stdcall CreateInstance(IUnknown*, REFIID id, void** object) override
    {
        return make_application(server_, for_workbooks_).object()->QueryInterface(id, object);
    }
    HRESULT __stdcall LockServer(BOOL) override { return S_OK; }

private:
    Server& server_;
    bool for_workbooks_;
};

int serve(const fs::path& program, const fs::path& folder)
{
    const bool is_workbooks = ::lstrcmpiW(program.filename().c_str(), L"EXCEL.EXE") == 0;
    Server server{Orders(folder)};
    server.orders.note("started");
    server.orders.obey("start");
    ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    Factory factory(server, is_workbooks);
    server.window = ::CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    CLSID id{};
    ::CLSIDFromString(is_workbooks ? workbooks_class : documents_class, &id);
    DWORD held = 0;
    if (FAILED(::CoRegisterClassObject(id, &factory, CLSCTX_LOCAL_SERVER, REGCLS_SINGLEUSE, &held))) return 1;
    constexpr DWORD between_looks = 5;
    while (!server.has_ended()) ::Sleep(between_looks);
    server.orders.note("ended");
    ::CoRevokeClassObject(held);
    ::CoUninitialize();
    return 0;
}

} // namespace

} // namespace tarvik::test

int main()
{
    int count = 0;
    const LPWSTR* words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    return words && count > 1 ? tarvik::test::serve(words[0], words[1]) : 2;
}
