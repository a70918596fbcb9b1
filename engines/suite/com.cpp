#include "engines/suite/com.h"

#include "platform/files/paths.h"

#include <objbase.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <future>
#include <thread>

namespace tarvik::windows {

namespace {

constexpr std::chrono::milliseconds between_looks{20}, between_attempts{100};
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

std::string hexadecimal(HRESULT number)
{
    std::array<char, 11> digits{};
    std::snprintf(digits.data(), digits.size(), "0x%08lx", static_cast<unsigned long>(number));
    return digits.data();
}

/// A call with all that it needs and what comes of it. Arguments pass in the order from the last to the first.
struct Invocation {
    Invocation(const _variant_t& of, const wchar_t* named, WORD how, ComObject::Values with)
        : object(of), name(named), way(how), arguments(std::move(with))
    {
    }
    Invocation(const Invocation&) = delete;
    Invocation& operator=(const Invocation&) = delete;
    ~Invocation() { forget_complaint(); }

    _variant_t object;
    std::wstring name;
    WORD way;
    ComObject::Values arguments;
    _variant_t answer;
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
        if (const HRESULT found = object.pdispVal->GetIDsOfNames(IID_NULL, &text, 1, english, &number); FAILED(found))
            return found;
        std::vector<VARIANT> passed;
        for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
            passed.push_back(static_cast<const VARIANT&>(*argument));
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters{passed.data(), nullptr, static_cast<UINT>(passed.size()), 0};
        if (way == DISPATCH_PROPERTYPUT) {
            parameters.rgdispidNamedArgs = &put;
            parameters.cNamedArgs = 1;
        }
        forget_complaint(); // of an attempt before
        const HRESULT result =
            object.pdispVal->Invoke(number, IID_NULL, english, way, &parameters, &answer, &complaint, nullptr);
        return result == DISP_E_EXCEPTION && complaint.scode != 0 ? complaint.scode : result;
    }

    Text words() const
    {
        if (!complaint.bstrDescription) return U"";
        return text_of(std::filesystem::path(std::wstring(complaint.bstrDescription)));
    }
};

} // namespace

void Patience::begin(Time patience, Text words)
{
    const std::lock_guard lock(mutex_);
    patience_ = patience;
    words_ = std::move(words);
}

void Patience::know(ApplicationProcess process)
{
    const std::lock_guard lock(mutex_);
    process_ = std::move(process);
}

HRESULT Patience::call(std::function<HRESULT()> work) const
{
    if (is_given_up_) throw libreoffice::ConnectionLost("given up");
    std::packaged_task<HRESULT()> task(std::move(work));
    auto done = task.get_future();
    std::thread([task = std::move(task)]() mutable {
        ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        task();
        task = {}; // objects that it holds go while the thread may still talk to them
        ::CoUninitialize();
    }).detach();
    while (done.wait_for(between_looks) != std::future_status::ready)
        if (is_given_up_ || Clock::now() > deadline_) throw libreoffice::ConnectionLost("given up");
    return done.get();
}

std::optional<Text> Patience::give_up(Time waited)
{
    const std::lock_guard lock(mutex_);
    if (waited < patience_) return std::nullopt;
    is_given_up_ = true;
    if (process_.handle && !::IsWindowVisible(process_.window)) ::TerminateProcess(process_.handle.get(), 1);
    return words_;
}

void refuse(HRESULT number, TextView words)
{
    const std::string reason = words.empty() ? hexadecimal(number) : to_utf8(words);
    if (is_one_of(number, gone)) throw libreoffice::ConnectionLost(reason);
    if (is_one_of(number, busy)) throw Refusal(to_utf8(U"程序一直忙，可能有窗口等待回答"));
    throw Refusal(reason);
}

ComObject::ComObject(const _variant_t& value, std::shared_ptr<Patience> patience)
    : value_(value), patience_(std::move(patience))
{
    if (value_.vt != VT_DISPATCH || !value_.pdispVal) throw Refusal("no object");
}

_variant_t ComObject::invoke(const wchar_t* name, WORD way, Values arguments) const
{
    const auto call = std::make_shared<Invocation>(value_, name, way, std::move(arguments));
    const HRESULT result = while_busy(*patience_, [call] { return call->run(); });
    if (result == DISP_E_UNKNOWNNAME) refuse(result, text_of(std::filesystem::path(name)));
    if (FAILED(result)) refuse(result, call->words());
    return call->answer;
}

long ComObject::count(const wchar_t* name) const
{
    auto value = invoke(name, getting, {});
    return FAILED(::VariantChangeType(&value, &value, 0, VT_I4)) ? 0 : value.lVal;
}

std::optional<ComObject> create_application(const wchar_t* name, const std::shared_ptr<Patience>& patience)
{
    CLSID class_id{};
    if (FAILED(::CLSIDFromProgID(name, &class_id))) return std::nullopt;
    const auto made = std::make_shared<_variant_t>();
    const HRESULT result = while_busy(*patience, [class_id, made, patience] {
        made->vt = VT_DISPATCH;
        const HRESULT created = ::CoCreateInstance(class_id, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                                   reinterpret_cast<void**>(&made->pdispVal));
        if (FAILED(created)) made->vt = VT_EMPTY;
        else if (patience->is_given_up()) ComObject(*made, std::make_shared<Patience>()).call(L"Quit");
        return created;
    });
    if (FAILED(result)) refuse(result, {});
    return ComObject(*made, patience);
}

} // namespace tarvik::windows
