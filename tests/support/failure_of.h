#pragma once

#include "platform/failure.h"

#include <string>

namespace tarvik::test {

/// What the user reads of the failure of this work.
template <typename Work>
std::string failure_of(Work&& work)
{
    try {
        work();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "no failure";
}

} // namespace tarvik::test
