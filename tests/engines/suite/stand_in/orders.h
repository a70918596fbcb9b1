#pragma once

#include <windows.h>

#include <filesystem>
#include <map>
#include <string>

namespace tarvik::test {

/// What a stand-in is told to do wrong, and what it tells of itself. Both are files in one folder: the orders are lines
/// "what member [times]" of orders.txt, read once; journal.txt has a line for each call.
class Orders {
public:
    explicit Orders(std::filesystem::path folder);

    /// Obeys the orders for this member: waits for ever (hang) or a moment (slow), ends the process (die), or gives
    /// what the call is to answer: busy, or fail.
    HRESULT obey(const std::string& member);
    /// Whether there is such an order at all.
    bool is_for(const std::string& member) const { return orders_.contains(member); }
    void note(const std::string& line) const;

private:
    struct Order {
        std::string what;
        int times = 0;
    };

    std::filesystem::path folder_;
    std::map<std::string, Order> orders_;
};

} // namespace tarvik::test
