#include "tests/engines/suite/stand_in/orders.h"

#include <fstream>
#include <limits>
#include <sstream>
#include <utility>

namespace tarvik::test {

namespace {

constexpr DWORD time_of_a_look = 300; // the engine's, with some to spare

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

} // namespace tarvik::test
