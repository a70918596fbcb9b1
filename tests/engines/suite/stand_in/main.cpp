#include "tests/engines/suite/stand_in/applications.h"
#include "tests/engines/suite/stand_in_suite.h"

#include <objbase.h>
#include <shellapi.h>

#include <fstream>
#include <iterator>

namespace tarvik::test {

std::vector<ServedObject::Member> application_members(Server& server, const wchar_t* files, ServedObject::Work make)
{
    const auto nothing = [](const Call&) { return ComValue(); };
    return {{files, std::move(make)},
            {L"Visible", nothing},
            {L"DisplayAlerts", nothing},
            {L"AutomationSecurity", nothing},
            {L"UserControl", [](const Call&) { return ComValue(false); }},
            {L"Quit", [&server](const Call&) {
                 server.has_quit = true;
                 return ComValue();
             }}};
}

std::filesystem::path path_in(const ComValue& value)
{
    const VARIANT& raw = value.raw();
    if (raw.vt != VT_BSTR) throw Refused{DISP_E_TYPEMISMATCH, L"no path"};
    return {std::wstring(raw.bstrVal, ::SysStringLen(raw.bstrVal))};
}

std::string bytes_of(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw Refused{static_cast<HRESULT>(0x800a03ec), L"找不到文件"};
    return {std::istreambuf_iterator<char>(stream), {}};
}

namespace {

class Factory final : public IClassFactory {
public:
    Factory(Server& server, ComValue (*make)(Server&)) : server_(server), make_(make) {}

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
        return make_(server_).object()->QueryInterface(id, object);
    }
    HRESULT __stdcall LockServer(BOOL) override { return S_OK; }

private:
    Server& server_;
    ComValue (*make_)(Server&);
};

int serve(const std::filesystem::path& program, const std::filesystem::path& folder)
{
    const bool is_workbooks = ::lstrcmpiW(program.filename().c_str(), L"EXCEL.EXE") == 0;
    Server server{Orders(folder)};
    server.orders.note("started");
    server.orders.obey("start");
    ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    Factory factory(server, is_workbooks ? make_workbook_application : make_document_application);
    CLSID id{};
    ::CLSIDFromString(is_workbooks ? workbooks_class : documents_class, &id);
    DWORD held = 0;
    if (FAILED(::CoRegisterClassObject(id, &factory, CLSCTX_LOCAL_SERVER, REGCLS_SINGLEUSE, &held))) return 1;
    constexpr DWORD between_looks = 5;
    while (!server.has_quit || server.objects > 0) ::Sleep(between_looks);
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
