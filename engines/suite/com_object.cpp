#include "engines/suite/com_object.h"

#include <objbase.h>
#include <oleauto.h>

#include <algorithm>
#include <cwchar>
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

/// The words of a failed call; they go with the object.
class Complaint {
public:
    Complaint() = default;
    ~Complaint() { clear(); }
    Complaint(const Complaint&) = delete;
    Complaint& operator=(const Complaint&) = delete;

    /// For a call to fill in; what an earlier one said is gone.
    EXCEPINFO* info() noexcept
    {
        clear();
        return &info_;
    }
    Text words() const { return from_wide(info_.bstrDescription, ::SysStringLen(info_.bstrDescription)); }
    /// What a call has come to that gave this.
    HRESULT number(HRESULT given) const noexcept
    {
        return given == DISP_E_EXCEPTION && info_.scode != 0 ? info_.scode : given;
    }

private:
    void clear() noexcept
    {
        for (BSTR text : {info_.bstrDescription, info_.bstrSource, info_.bstrHelpFile}) ::SysFreeString(text);
        info_ = {};
    }

    EXCEPINFO info_{};
};

Text hexadecimal(HRESULT number)
{
    Text made = U"0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        made += U"0123456789abcdef"[static_cast<std::uint32_t>(number) >> static_cast<unsigned>(shift) & 15U];
    return made;
}

} // namespace

void refuse(HRESULT number, TextView words)
{
    const Text told = words.empty() ? hexadecimal(number) : words.str();
    if (is_one_of(number, gone)) throw libreoffice::ConnectionLost(to_utf8(told));
    if (is_one_of(number, busy)) throw Refusal(to_utf8(U"程序一直忙，可能有窗口等待回答"));
    throw Refusal(to_utf8(told));
}

ComObject::ComObject(ComValue value, std::shared_ptr<Patience> patience)
    : value_(std::move(value)), patience_(std::move(patience))
{
    if (!value_.object()) throw Refusal("no object");
}

DISPID ComObject::number_of(const wchar_t* name) const
{
    const auto number = std::make_shared<DISPID>();
    const HRESULT result = while_busy(*patience_, [object = value_, name, number] {
        std::wstring asked = name;
        LPOLESTR text = asked.data();
        return object.object()->GetIDsOfNames(IID_NULL, &text, 1, english, number.get());
    });
    if (FAILED(result)) refuse(result, from_wide(name, std::wcslen(name)));
    return *number;
}

namespace {

/// A call with all that it needs and what comes of it. Arguments pass in the order from the last to the first.
struct Invocation {
    Invocation(ComValue of, DISPID named, WORD how, std::vector<ComValue> with)
        : object(std::move(of)), number(named), way(how), arguments(std::move(with))
    {
    }

    ComValue object;
    DISPID number;
    WORD way;
    std::vector<ComValue> arguments;
    ComValue answer;
    Complaint complaint;

    HRESULT run()
    {
        std::vector<VARIANT> passed;
        for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
            passed.push_back(argument->raw());
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters{passed.data(), nullptr, static_cast<UINT>(passed.size()), 0};
        if (way == DISPATCH_PROPERTYPUT) {
            parameters.rgdispidNamedArgs = &put;
            parameters.cNamedArgs = 1;
        }
        return complaint.number(object.object()->Invoke(number, IID_NULL, english, way, &parameters, &answer.raw(),
                                                        complaint.info(), nullptr));
    }
};

} // namespace

ComValue ComObject::invoke(const wchar_t* name, WORD way, std::vector<ComValue> arguments) const
{
    const auto call = std::make_shared<Invocation>(value_, number_of(name), way, std::move(arguments));
    const HRESULT result = while_busy(*patience_, [call] { return call->run(); });
    if (FAILED(result)) refuse(result, call->complaint.words());
    return std::move(call->answer);
}

ComValue ComObject::get(const wchar_t* name, std::vector<ComValue> arguments) const
{
    return invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, std::move(arguments));
}

ComObject ComObject::object(const wchar_t* name, std::vector<ComValue> arguments) const
{
    return {get(name, std::move(arguments)), patience_};
}

void ComObject::put(const wchar_t* name, ComValue value) const
{
    invoke(name, DISPATCH_PROPERTYPUT, {std::move(value)});
}

ComValue ComObject::call(const wchar_t* name, std::vector<ComValue> arguments) const
{
    return invoke(name, DISPATCH_METHOD, std::move(arguments));
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
