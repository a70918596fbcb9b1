#include "tests/engines/suite/stand_in/served_object.h"

#include "platform/failure.h"
#include "platform/files/path_text.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <sstream>

namespace tarvik::test {

namespace {

/// "Old format or invalid type library error when automating Excel": under a language that it lacks it answers nothing.
constexpr LCID english = 0x0409;
constexpr HRESULT no_such_language = static_cast<HRESULT>(0x80028018);

constexpr DWORD time_of_a_look = 300; // the engine's, with some to spare

std::wstring text_in(const VARIANT& value)
{
    return value.vt == VT_BSTR ? std::wstring(value.bstrVal, ::SysStringLen(value.bstrVal)) : std::wstring();
}

std::string told(const ComValue& value)
{
    const VARIANT& raw = value.raw();
    if (raw.vt == VT_BSTR) return to_bytes(std::filesystem::path(text_in(raw)).filename().native());
    if (raw.vt == VT_EMPTY) return "empty";
    if (raw.vt == VT_ERROR) return "missing";
    if (raw.vt == VT_DISPATCH) return "object";
    return std::to_string(value.as_count());
}

std::string told(const Call& call)
{
    std::string line;
    for (const auto& argument : call.arguments) line += (line.empty() ? "" : ", ") + told(argument);
    return call.is_put ? " = " + line : "(" + line + ")";
}

void complain(EXCEPINFO* complaint, HRESULT number, const std::wstring& words)
{
    if (!complaint) return;
    *complaint = {};
    complaint->scode = number;
    complaint->bstrDescription = ::SysAllocStringLen(words.data(), static_cast<UINT>(words.size()));
}

} // namespace

Orders::Orders(std::filesystem::path folder) : folder_(std::move(folder))
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

HRESULT Orders::obey(const std::string& member)
{
    const auto found = orders_.find(member);
    if (found == orders_.end() || found->second.times-- <= 0) return S_OK;
    const auto& what = found->second.what;
    note(what + " " + member);
    if (what == "hang") ::Sleep(INFINITE);
    if (what == "slow") {
        ::Sleep(time_of_a_look);
        return S_OK;
    }
    if (what == "die") ::TerminateProcess(::GetCurrentProcess(), 1);
    return what == "busy" ? RPC_E_CALL_REJECTED : DISP_E_EXCEPTION;
}

void Orders::note(const std::string& line) const
{
    std::ofstream file(folder_ / "journal.txt", std::ios::app | std::ios::binary);
    file << line << "\n";
}

std::string to_bytes(const std::wstring& text)
{
    const int size = static_cast<int>(text.size());
    std::string bytes(static_cast<std::size_t>(size) * 3, '\0');
    bytes.resize(static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, bytes.data(),
                                                                static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

ComValue ServedObject::make(Server& server, std::string name, std::vector<Member> members)
{
    return ComValue(*new ServedObject(server, std::move(name), std::move(members)));
}

ServedObject::ServedObject(Server& server, std::string name, std::vector<Member> members)
    : server_(server), name_(std::move(name)), members_(std::move(members))
{
    ++server_.objects;
    server_.was_used = true;
}

ServedObject::~ServedObject()
{
    --server_.objects;
}

HRESULT ServedObject::QueryInterface(REFIID id, void** object)
{
    const bool is_known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch);
    *object = is_known ? static_cast<IDispatch*>(this) : nullptr;
    if (is_known) AddRef();
    return is_known ? S_OK : E_NOINTERFACE;
}

ULONG ServedObject::AddRef()
{
    return ++references_;
}

ULONG ServedObject::Release()
{
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT ServedObject::GetTypeInfoCount(UINT* count)
{
    *count = 0;
    return S_OK;
}

HRESULT ServedObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID language, DISPID* numbers)
{
    if (language != english) return no_such_language;
    const auto found = std::ranges::find_if(
        members_, [&](const Member& member) { return ::lstrcmpiW(member.name.c_str(), names[0]) == 0; });
    std::fill_n(numbers, count, DISPID_UNKNOWN);
    if (found == members_.end() || count != 1) return DISP_E_UNKNOWNNAME;
    numbers[0] = static_cast<DISPID>(found - members_.begin()) + 1;
    return S_OK;
}

HRESULT ServedObject::Invoke(DISPID number, REFIID, LCID language, WORD way, DISPPARAMS* parameters, VARIANT* answer,
                             EXCEPINFO* complaint, UINT*)
{
    if (language != english) return no_such_language;
    const auto place = static_cast<std::size_t>(number) - 1;
    if (place >= members_.size()) return DISP_E_MEMBERNOTFOUND;
    Call call{(way & DISPATCH_PROPERTYPUT) != 0, {}};
    for (UINT i = parameters->cArgs; i > 0; --i) {
        ComValue argument;
        if (FAILED(::VariantCopyInd(&argument.raw(), &parameters->rgvarg[i - 1]))) return E_OUTOFMEMORY;
        call.arguments.push_back(std::move(argument));
    }
    AddRef(); // a call may let go of the object
    const HRESULT result = answer_call(members_[place], call, answer, complaint);
    Release();
    return result;
}

HRESULT ServedObject::answer_call(const Member& member, const Call& call, VARIANT* answer, EXCEPINFO* complaint)
{
    try {
        const std::string name = to_bytes(member.name);
        const HRESULT ordered = server_.orders.obey(name);
        if (ordered == DISP_E_EXCEPTION) throw Refused{static_cast<HRESULT>(0x800a03ec), L"磁盘已满"};
        if (ordered != S_OK) return ordered;
        server_.orders.note(name_ + "." + name + told(call));
        ComValue made = member.work(call);
        if (answer) std::swap(*answer, made.raw());
        return S_OK;
    } catch (const Refused& refused) {
        complain(complaint, refused.number, refused.words);
    } catch (const Failure& failure) {
        complain(complaint, E_FAIL, path_of_utf8(failure.what()).native());
    } catch (const std::exception&) {
        complain(complaint, E_UNEXPECTED, L"stand-in");
    }
    return DISP_E_EXCEPTION;
}

} // namespace tarvik::test
