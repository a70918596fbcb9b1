#include "tests/engines/suite/stand_in/applications.h"
#include "tests/engines/suite/stand_in_suite.h"

#include <objbase.h>
#include <shellapi.h>

#include <filesystem>

namespace tarvik::test {

namespace {

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

int serve(const std::filesystem::path& program, const std::filesystem::path& folder)
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
