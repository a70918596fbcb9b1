#include "platform/files/paths.h"
#include "tests/engines/suite/stand_in_suite.h"

#include <windows.h>

#include <comdef.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <objbase.h>
#include <shellapi.h>
#include <sstream>

/// The stand-in of one application of the suite. Each rule names the page of the suite's own reference that states it.
namespace tarvik::test {

namespace {

namespace fs = std::filesystem;

constexpr HRESULT refused = static_cast<HRESULT>(0x800a03ec);

/// "Old format or invalid type library error when automating Excel": under a language that it lacks it answers nothing.
constexpr LCID english = 0x0409;
constexpr HRESULT no_such_language = static_cast<HRESULT>(0x80028018);

/// What a stand-in is told to do wrong, and what it tells of itself. Both are files in one folder: the orders are lines
/// "what member [times]" of orders.txt, read once; journal.txt has a line for each call.
class Orders {
public:
    explicit Orders(fs::path folder) : folder_(std::move(folder))
    {
        std::ifstream file(folder_ / "orders.txt");
        for (std::string line; std::getline(file, line);) {
            std::istringstream words(line);
            std::string member;
            Order order;
            words >> order.what >> member;
            if (!(words >> order.times)) order.times = std::numeric_limits<int>::max();
            orders_[member] = order;
        }
    }

    /// Obeys the orders for this member: waits for ever (hang) or a moment (slow), ends the process (die), or gives
    /// what the call is to answer: busy, or fail.
    HRESULT obey(const std::string& member)
    {
        constexpr DWORD time_of_a_look = 300; // the engine's, with some to spare
        const auto found = orders_.find(member);
        if (found == orders_.end() || found->second.times-- <= 0) return S_OK;
        const auto& what = found->second.what;
        note(what + " " + member);
        if (what == "hang") ::Sleep(INFINITE);
        if (what == "slow") ::Sleep(time_of_a_look);
        if (what == "die") ::TerminateProcess(::GetCurrentProcess(), 1);
        if (what == "slow") return S_OK;
        return what == "busy" ? RPC_E_CALL_REJECTED : DISP_E_EXCEPTION;
    }
    /// Whether there is such an order at all.
    bool is_for(const std::string& member) const { return orders_.contains(member); }
    void note(const std::string& line) const
    {
        std::ofstream(folder_ / "journal.txt", std::ios::app | std::ios::binary) << line << "\n";
    }

private:
    struct Order {
        std::string what;
        int times = 0;
    };

    fs::path folder_;
    std::map<std::string, Order> orders_;
};

/// What the objects of a stand-in share. It ends when the last object is let go of, unless it is shown and did not
/// quit: "Application.UserControl property (Excel)".
struct Server {
    Orders orders;
    HWND window = nullptr;
    std::atomic<int> objects = 0, open_files = 0;
    std::atomic<bool> was_used = false, has_quit = false, is_visible = false;

    _variant_t window_value() const { return static_cast<long>(reinterpret_cast<INT_PTR>(window)); }
    bool has_ended() const { return was_used && objects == 0 && (has_quit || !is_visible); }
};

using Arguments = std::vector<_variant_t>; ///< in the order in which they are written

std::string told(const _variant_t& value)
{
    if (value.vt == VT_BSTR) return utf8_of(fs::path(std::wstring(value.bstrVal)).filename());
    if (value.vt == VT_ERROR) return "missing";
    return std::to_string(static_cast<long>(value));
}

struct Member {
    std::wstring name;
    std::function<_variant_t(const Arguments&)> work; ///< throws the words of a refusal
};

/// An object with members that are looked up by name; it goes with the last reference to it.
class ServedObject final : public IDispatch {
public:
    static _variant_t make(Server& server, std::string name, std::vector<Member> members)
    {
        return {static_cast<IDispatch*>(new ServedObject(server, std::move(name), std::move(members))), true};
    }

    HRESULT __stdcall QueryInterface(REFIID id, void** object) override
    {
        const bool is_known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch);
        *object = is_known ? static_cast<IDispatch*>(this) : nullptr;
        if (is_known) AddRef();
        return is_known ? S_OK : E_NOINTERFACE;
    }
    ULONG __stdcall AddRef() override { return ++references_; }
    ULONG __stdcall Release() override
    {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT __stdcall GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT __stdcall GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }

    HRESULT __stdcall GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID language, DISPID* numbers) override
    {
        if (language != english) return no_such_language;
        const auto found = std::ranges::find_if(
            members_, [&](const Member& member) { return ::lstrcmpiW(member.name.c_str(), names[0]) == 0; });
        if (found == members_.end()) return DISP_E_UNKNOWNNAME;
        numbers[0] = static_cast<DISPID>(found - members_.begin());
        return S_OK;
    }

    HRESULT __stdcall Invoke(DISPID number, REFIID, LCID language, WORD way, DISPPARAMS* parameters, VARIANT* answer,
                             EXCEPINFO* complaint, UINT*) override
    {
        if (language != english) return no_such_language;
        const Arguments arguments(std::make_reverse_iterator(parameters->rgvarg + parameters->cArgs),
                                  std::make_reverse_iterator(parameters->rgvarg));
        const auto& [name, work] = members_.at(static_cast<std::size_t>(number));
        const _variant_t kept(static_cast<IDispatch*>(this), true); // a call may let go of the object
        const auto utf8 = utf8_of(fs::path(name));
        try {
            const HRESULT ordered = server_.orders.obey(utf8);
            if (ordered == DISP_E_EXCEPTION) throw L"磁盘已满";
            if (ordered != S_OK) return ordered;
            std::string line;
            for (const auto& argument : arguments) line += (line.empty() ? "" : ", ") + told(argument);
            const bool is_put = (way & DISPATCH_PROPERTYPUT) != 0;
            server_.orders.note(name_ + "." + utf8 + (is_put ? " = " + line : "(" + line + ")"));
            auto made = work(arguments);
            if (answer) *answer = made.Detach();
            return S_OK;
        } catch (const wchar_t* words) {
            *complaint = {};
            complaint->scode = refused;
            complaint->bstrDescription = ::SysAllocString(words);
        }
        return DISP_E_EXCEPTION;
    }

private:
    ServedObject(Server& server, std::string name, std::vector<Member> members)
        : server_(server), name_(std::move(name)), members_(std::move(members))
    {
        ++server_.objects;
        server_.was_used = true;
    }
    ~ServedObject() { --server_.objects; }

    Server& server_;
    std::string name_;
    std::vector<Member> members_;
    std::atomic<ULONG> references_ = 0;
};

_variant_t nothing(const Arguments& /*arguments*/)
{
    return {};
}

fs::path path_in(const _variant_t& value)
{
    return std::wstring(value.bstrVal);
}

/// Whether a file of this name is one of the older formats.
bool is_older(const fs::path& path)
{
    return path.extension() == ".xls" || path.extension() == ".doc";
}

// "Workbooks.Open method (Excel)", "Documents.Open method (Word)"; "Window.Hwnd property (Word)".
_variant_t open(Server& server, bool is_workbook, const Arguments& arguments)
{
    const auto path = path_in(arguments.at(0));
    std::ifstream stream(path, std::ios::binary);
    if (!stream) throw L"找不到文件";
    std::string package{std::istreambuf_iterator<char>(stream), {}};
    if (is_older(path)) package = packed_in(package);
    ++server.open_files;
    const auto save = [is_workbook, package](const Arguments& saving) -> _variant_t {
        const auto target = path_in(saving.at(0));
        std::ofstream(target, std::ios::binary)
            << (is_older(target) ? older_with(is_workbook ? "Workbook" : "WordDocument", package) : package);
        return {};
    };
    const auto close = [&server](const Arguments&) -> _variant_t {
        if (!server.orders.is_for("clerk")) --server.open_files; // a clerk's file is opened meanwhile
        return {};
    };
    const auto object = [&server](const char* name, std::vector<Member> members) {
        return [&server, name, members](const Arguments&) { return ServedObject::make(server, name, members); };
    };
    const auto sheet = object("Worksheet", {{L"PrintOut", nothing}});
    const auto hwnd = [&server](const Arguments&) { return server.window_value(); };
    return ServedObject::make(server, is_workbook ? "Workbook" : "Document",
                              {{L"SaveAs", save},
                               {L"ActiveWindow", object("Window", {{L"Hwnd", hwnd}})},
                               {L"Worksheets", object("Worksheets", {{L"Item", sheet}})},
                               {L"PrintOut", nothing},
                               {L"Close", close}});
}

// "Application.DisplayAlerts property (Excel)" and "Application.Quit method (Excel)": without alerts it quits without
// saving. "Application.UserControl property (Excel)": one that is shown is the user's.
_variant_t make_application(Server& server, bool is_workbook)
{
    const char* const files = is_workbook ? "Workbooks" : "Documents";
    const auto opened = [&server, is_workbook, files](const Arguments&) {
        return ServedObject::make(
            server, files,
            {{L"Count", [&server](const Arguments&) -> _variant_t { return static_cast<long>(server.open_files); }},
             {L"Open", [&server, is_workbook](const Arguments& all) { return open(server, is_workbook, all); }}});
    };
    const auto show = [&server](const Arguments& arguments) -> _variant_t {
        server.is_visible = static_cast<bool>(arguments.at(0));
        return {};
    };
    const auto quit = [&server](const Arguments&) -> _variant_t {
        server.has_quit = true;
        return {};
    };
    return ServedObject::make(
        server, "Application",
        {{path_of_utf8(files).native(), opened},
         {L"Visible", show},
         {L"DisplayAlerts", nothing},
         {L"AutomationSecurity", nothing},
         {L"CalculateFull", nothing},
         {is_workbook ? L"Hwnd" : L"none", [&server](const Arguments&) { return server.window_value(); }},
         {L"Quit", quit}});
}

class Factory final : public IClassFactory {
public:
    Factory(Server& server, bool is_workbook) : server_(server), is_workbook_(is_workbook) {}

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
        return make_application(server_, is_workbook_).pdispVal->QueryInterface(id, object);
    }
    HRESULT __stdcall LockServer(BOOL) override { return S_OK; }

private:
    Server& server_;
    bool is_workbook_;
};

int serve(const fs::path& program, const fs::path& folder)
{
    const bool is_workbook = ::lstrcmpiW(program.filename().c_str(), L"EXCEL.EXE") == 0;
    Server server{Orders(folder)};
    server.orders.note("started");
    server.orders.obey("start");
    ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    Factory factory(server, is_workbook);
    server.window = ::CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    CLSID id{};
    ::CLSIDFromString(is_workbook ? workbooks_class : documents_class, &id);
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
