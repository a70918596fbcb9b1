#include "engines/suite/com_object.h"

#include <objbase.h>
#include <oleauto.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace tarvik::windows {

namespace {

constexpr std::chrono::milliseconds between_attempts{100};
constexpr int most_attempts = 200;

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

template <typename Work>
HRESULT while_busy(const Work& work)
{
    HRESULT result = work();
    for (int attempt = 1; attempt < most_attempts && is_one_of(result, busy); ++attempt) {
        std::this_thread::sleep_for(between_attempts);
        result = work();
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
    if (is_one_of(number, busy)) throw Refusal(to_utf8(U"程序一直忙，可能有窗口等待回答"), number);
    throw Refusal(to_utf8(told), number);
}

ComObject::ComObject(ComValue value, std::shared_ptr<Names> names) : value_(std::move(value)), names_(std::move(names))
{
    if (!value_.object()) throw Refusal("no object", E_NOINTERFACE);
}

DISPID ComObject::number_of(const wchar_t* name) const
{
    const auto known = names_->numbers.find(name);
    if (known != names_->numbers.end()) return known->second;
    std::wstring told = name;
    LPOLESTR text = told.data();
    DISPID number = 0;
    const HRESULT result =
        while_busy([&] { return value_.object()->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &number); });
    if (FAILED(result)) refuse(result, from_wide(told.data(), told.size()));
    names_->numbers.emplace(name, number);
    return number;
}

// Arguments pass in the order from the last to the first.
ComValue ComObject::invoke(const wchar_t* name, WORD way, std::vector<ComValue>& arguments) const
{
    const DISPID number = number_of(name);
    std::vector<VARIANT> passed;
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
        passed.push_back(argument->raw());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{passed.data(), nullptr, static_cast<UINT>(passed.size()), 0};
    if (way == DISPATCH_PROPERTYPUT) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    ComValue answer;
    Complaint complaint;
    const HRESULT result = while_busy([&] {
        return complaint.number(value_.object()->Invoke(number, IID_NULL, LOCALE_USER_DEFAULT, way, &parameters,
                                                        &answer.raw(), complaint.info(), nullptr));
    });
    if (FAILED(result)) refuse(result, complaint.words());
    return answer;
}

ComValue ComObject::get(const wchar_t* name, std::vector<ComValue> arguments) const
{
    return invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, arguments);
}

ComObject ComObject::object(const wchar_t* name, std::vector<ComValue> arguments) const
{
    auto& names = names_->members[name];
    if (!names) names = std::make_shared<Names>();
    return {get(name, std::move(arguments)), names};
}

void ComObject::put(const wchar_t* name, ComValue value) const
{
    std::vector<ComValue> arguments{std::move(value)};
    invoke(name, DISPATCH_PROPERTYPUT, arguments);
}

ComValue ComObject::call(const wchar_t* name, std::vector<ComValue> arguments) const
{
    return invoke(name, DISPATCH_METHOD, arguments);
}

std::optional<ComObject> create_application(const wchar_t* name)
{
    CLSID number{};
    if (FAILED(::CLSIDFromProgID(name, &number))) return std::nullopt;
    IDispatch* application = nullptr;
    const HRESULT result = while_busy([&] {
        return ::CoCreateInstance(number, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                  reinterpret_cast<void**>(&application));
    });
    if (FAILED(result)) refuse(result, {});
    const ComValue value(*application);
    application->Release();
    return ComObject(value);
}

} // namespace tarvik::windows
