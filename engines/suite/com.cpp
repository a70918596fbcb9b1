#include "engines/suite/com.h"

#include "platform/files/path_text.h"

#include <objbase.h>

#include <algorithm>
#include <new>
#include <thread>

namespace tarvik::windows {

namespace {

constexpr std::chrono::milliseconds between_attempts{100};
constexpr int most_attempts = 200;
/// Under the user's own settings the suite refuses calls where it lacks that language.
constexpr LCID english = 0x0409;

/// A window of the application is open, a cell is edited, another call is under way.
constexpr HRESULT busy[] = {RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER, static_cast<HRESULT>(0x800ac472)};
constexpr HRESULT gone[] = {RPC_E_DISCONNECTED,
                            RPC_E_SERVERFAULT,
                            RPC_E_SERVER_DIED,
                            RPC_E_SERVER_DIED_DNE,
                            CO_E_OBJNOTCONNECTED,
                            HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE),
                            HRESULT_FROM_WIN32(RPC_S_CALL_FAILED),
                            HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE)};

bool is_one_of(HRESULT number, std::span<const HRESULT> numbers)
{
    return std::ranges::find(numbers, number) != numbers.end();
}

/// Calls until the program is no longer busy. What the call needs is its own: it may outlast who waits for it.
HRESULT while_busy(const Patience& patience, const std::function<HRESULT()>& work)
{
    HRESULT result = patience.call(work);
    for (int attempt = 1; attempt < most_attempts && is_one_of(result, busy); ++attempt) {
        std::this_thread::sleep_for(between_attempts);
        result = patience.call(work);
    }
    return result;
}

BSTR allocated(const std::wstring& text)
{
    BSTR made = ::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!made) throw std::bad_alloc();
    return made;
}

Text hexadecimal(HRESULT number)
{
    Text made = U"0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        made += U"0123456789abcdef"[static_cast<std::uint32_t>(number) >> static_cast<unsigned>(shift) & 15U];
    return made;
}

} // namespace

ComValue::ComValue(bool value) noexcept
{
    value_.vt = VT_BOOL;
    value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

ComValue::ComValue(int value) noexcept
{
    value_.vt = VT_I4;
    value_.lVal = value;
}

ComValue::ComValue(const wchar_t* value)
{
    value_.bstrVal = allocated(value);
    value_.vt = VT_BSTR;
}

ComValue::ComValue(const std::filesystem::path& value) : ComValue(std::filesystem::path(value).make_preferred().c_str())
{
}

ComValue::ComValue(IDispatch& object) noexcept
{
    value_.vt = VT_DISPATCH;
    value_.pdispVal = &object;
    object.AddRef();
}

ComValue ComValue::missing() noexcept
{
    ComValue made;
    made.value_.vt = VT_ERROR;
    made.value_.scode = DISP_E_PARAMNOTFOUND;
    return made;
}

ComValue::ComValue(const ComValue& other)
{
    if (FAILED(::VariantCopy(&value_, const_cast<VARIANT*>(&other.value_)))) throw std::bad_alloc();
}

ComValue& ComValue::operator=(ComValue other) noexcept
{
    std::swap(value_, other.value_);
    return *this;
}

int ComValue::as_count() const noexcept
{
    VARIANT number{};
    if (FAILED(::VariantChangeType(&number, const_cast<VARIANT*>(&value_), 0, VT_I4))) return 0;
    return number.lVal;
}

void refuse(HRESULT number, TextView words)
{
    const Text reason = words.empty() ? hexadecimal(number) : words.str();
    if (is_one_of(number, gone)) throw libreoffice::ConnectionLost(to_utf8(reason));
    if (is_one_of(number, busy)) throw Refusal(to_utf8(U"程序一直忙，可能有窗口等待回答"));
    throw Refusal(to_utf8(reason));
}

ComObject::ComObject(ComValue value, std::shared_ptr<Patience> patience)
    : value_(std::move(value)), patience_(std::move(patience))
{
    if (!value_.object()) throw Refusal("no object");
}

namespace {

/// A call with all that it needs and what comes of it. Arguments pass in the order from the last to the first.
struct Invocation {
    Invocation(ComValue of, const wchar_t* named, WORD how, ComObject::Values with)
        : object(std::move(of)), name(named), way(how), arguments(std::move(with))
    {
    }
    Invocation(const Invocation&) = delete;
    Invocation& operator=(const Invocation&) = delete;
    ~Invocation() { forget_complaint(); }

    ComValue object;
    std::wstring name;
    WORD way;
    ComObject::Values arguments;
    ComValue answer;
    EXCEPINFO complaint{};

    void forget_complaint() noexcept
    {
        for (BSTR text : {complaint.bstrDescription, complaint.bstrSource, complaint.bstrHelpFile})
            ::SysFreeString(text);
        complaint = {};
    }

    HRESULT run()
    {
        DISPID number = 0;
        LPOLESTR text = name.data();
        if (const HRESULT found = object.object()->GetIDsOfNames(IID_NULL, &text, 1, english, &number); FAILED(found))
            return found;
        std::vector<VARIANT> passed;
        for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
            passed.push_back(argument->raw());
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters{passed.data(), nullptr, static_cast<UINT>(passed.size()), 0};
        if (way == DISPATCH_PROPERTYPUT) {
            parameters.rgdispidNamedArgs = &put;
            parameters.cNamedArgs = 1;
        }
        forget_complaint(); // of an attempt before
        const HRESULT result =
            object.object()->Invoke(number, IID_NULL, english, way, &parameters, &answer.raw(), &complaint, nullptr);
        return result == DISP_E_EXCEPTION && complaint.scode != 0 ? complaint.scode : result;
    }

    Text words() const
    {
        if (!complaint.bstrDescription) return U"";
        return text_of(std::filesystem::path(std::wstring(complaint.bstrDescription)));
    }
};

} // namespace

ComValue ComObject::invoke(const wchar_t* name, WORD way, Values arguments) const
{
    const auto call = std::make_shared<Invocation>(value_, name, way, std::move(arguments));
    const HRESULT result = while_busy(*patience_, [call] { return call->run(); });
    if (result == DISP_E_UNKNOWNNAME) refuse(result, text_of(std::filesystem::path(name)));
    if (FAILED(result)) refuse(result, call->words());
    return std::move(call->answer);
}

std::optional<ComObject> create_application(const wchar_t* name, const std::shared_ptr<Patience>& patience)
{
    CLSID class_id{};
    if (FAILED(::CLSIDFromProgID(name, &class_id))) return std::nullopt;
    const auto made = std::make_shared<ComValue>();
    const HRESULT result = while_busy(*patience, [class_id, made, patience] {
        made->raw().vt = VT_DISPATCH;
        const HRESULT created = ::CoCreateInstance(class_id, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                                   reinterpret_cast<void**>(&made->raw().pdispVal));
        if (FAILED(created)) *made = {};
        else if (patience->is_given_up()) ComObject(*made, std::make_shared<Patience>()).call(L"Quit");
        return created;
    });
    if (FAILED(result)) refuse(result, {});
    return ComObject(*made, patience);
}

} // namespace tarvik::windows
