#pragma once

#include "engines/suite/com_value.h"

#include <map>

namespace tarvik::windows {

/// What an application answers to a call that it refuses: its own words, and its number.
class Refusal : public std::runtime_error {
public:
    Refusal(const std::string& words, HRESULT number) : std::runtime_error(words), number_(number) {}
    HRESULT number() const noexcept { return number_; }

private:
    HRESULT number_;
};

/// Throws ConnectionLost where the number says that the other program is gone, else Refusal.
[[noreturn]] void refuse(HRESULT number, TextView words);

/// An object of another program, whose members are looked up by name when they are first used. A program that is busy
/// is asked again for a while.
class ComObject {
public:
    explicit ComObject(const ComValue& value) : ComObject(value, std::make_shared<Names>()) {}

    ComValue get(const wchar_t* name, std::vector<ComValue> arguments = {}) const;
    /// A member that is an object itself.
    ComObject object(const wchar_t* name, std::vector<ComValue> arguments = {}) const;
    void put(const wchar_t* name, ComValue value) const;
    ComValue call(const wchar_t* name, std::vector<ComValue> arguments = {}) const;
    const ComValue& value() const noexcept { return value_; }

private:
    /// Members that were looked up: objects that are reached in the same way have the same members.
    struct Names {
        std::map<std::wstring, DISPID> numbers;
        std::map<std::wstring, std::shared_ptr<Names>> members;
    };
    ComObject(ComValue value, std::shared_ptr<Names> names);

    DISPID number_of(const wchar_t* name) const;
    ComValue invoke(const wchar_t* name, WORD way, std::vector<ComValue>& arguments) const;

    ComValue value_;
    std::shared_ptr<Names> names_;
};

/// A new application of this name; nothing where none is installed.
std::optional<ComObject> create_application(const wchar_t* name);

} // namespace tarvik::windows
