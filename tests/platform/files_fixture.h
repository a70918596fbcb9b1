#pragma once

#include "platform/files/files.h"
#include "tests/support/failure_of.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {

/// Files over two folders, the second of which is the drive D.
class FilesTest : public testing::Test {
protected:
    TemporaryFolder installation, drive;
    Files files{installation.path() / "", {{'D', drive.path()}}};

    std::size_t entries() const
    {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(installation.path()), {}));
    }
};

} // namespace tarvik::test
