#include "tests/engines/libreoffice/office_fixture.h"

#include "tests/engines/suite/stand_in_suite.h"

namespace tarvik::test {

namespace {

class Removal final : public testing::Environment {
    void TearDown() override
    {
        if (may_install_stand_in()) remove_stand_in();
    }
};

const auto* const removal = testing::AddGlobalTestEnvironment(new Removal);

} // namespace

libreoffice::Settings office_settings()
{
    return {};
}

void OfficeTest::SetUp()
{
    if (!may_install_stand_in()) GTEST_SKIP() << "the suite itself may be installed here";
    install_stand_in(folder.path());
}

} // namespace tarvik::test
