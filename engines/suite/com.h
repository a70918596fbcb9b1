#pragma once

#include "engines/suite/patience.h"

#include <oaidl.h>
#include <oleauto.h>

#include <utility>

/// Values and objects of an application that is driven from outside. Everything here is used on one thread.
namespace tarvik::windows {

/// A value that passes between the programs, and what is behind it goes with it.
class ComValue {
public:
    ComValue() noexcept = default; ///< no value at all
    // NOLINTBEGIN(google-explicit-constructor): an argument is written as what it is.
    ComValue(bool value) noexcept;
    ComValue(int value) noexcept;
    ComValue(const wchar_t* value);
    ComValue(const std::filesystem::path& value);
    // NOLINTEND(google-explicit-constructor)
    explicit ComValue(IDispatch& object) noexcept;
    /// An argument that is left out.
    static ComValue missing() noexcept;
    ComValue(const ComValue& other);
    ComValue(ComValue&& other) noexcept : value_(std::exchange(other.value_, {})) {}
    ComValue& operator=(ComValue other) noexcept;
    ~ComValue() { ::VariantClear(&value_); }

    VARIANT& raw() noexcept { return value_; }
    const VARIANT& raw() const noexcept { return value_; }
    /// Nothing where it is no object.
    IDispatch* object() const noexcept { return value_.vt == VT_DISPATCH ? value_.pdispVal : nullptr; }
    /// 0 where it is no number.
    int as_count() const noexcept;

private:
    VARIANT value_{};
};

/// What an application answers to a call that it refuses, in its own words.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws ConnectionLost where the number says that the other program is gone, else Refusal.
[[noreturn]] void refuse(HRESULT number, TextView words);

/// An object of another program, whose members are looked up by name. A program that is busy is asked again for a
/// while; one that hangs is waited for until the patience ends. Names and values are those of English everywhere.
class ComObject {
public:
    using Values = std::vector<ComValue>;
    ComObject(ComValue value, std::shared_ptr<Patience> patience);

    ComValue get(const wchar_t* name) const { return invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, {}); }
    /// A member that is an object itself.
    ComObject object(const wchar_t* name, Values arguments = {}) const
    {
        return {invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, std::move(arguments)), patience_};
    }
    void put(const wchar_t* name, ComValue value) const { invoke(name, DISPATCH_PROPERTYPUT, {std::move(value)}); }
    void call(const wchar_t* name, Values arguments = {}) const { invoke(name, DISPATCH_METHOD, std::move(arguments)); }

private:
    ComValue invoke(const wchar_t* name, WORD way, Values arguments) const;

    ComValue value_;
    std::shared_ptr<Patience> patience_;
};

/// A new application of this name; nothing where none is installed. One that comes only after it was given up is asked
/// to quit.
std::optional<ComObject> create_application(const wchar_t* name, const std::shared_ptr<Patience>& patience);

} // namespace tarvik::windows
