#include "engines/spreadsheets/engine.h"
#include "tests/support/places.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

/// The scripts in installation/ played by the real program over a copy of the samples, and what the sheets then hold.
namespace tarvik::test {
namespace {

namespace fs = std::filesystem;

const fs::path samples = fs::path(test::source_folder()) / "installation/维修";

class RepairSamples : public testing::Test {
protected:
    TemporaryFolder folder;
    DiskFiles files{folder.path()};
    RecordedPrinter printer;
    OoxmlSpreadsheets engine{files, printer};

    RepairSamples() { fs::copy(samples, folder.path() / "维修", fs::copy_options::recursive); }

    void play(const std::string& script)
    {
        const std::string root = folder.path().string();
        const std::string command = "'" + test::built_installation() + "/tarvik-play' --install " + root +
                                    " --drive d=" + root + " '" + test::source_folder() + "/installation/" + script +
                                    "' >" + root + "/out 2>&1";
        EXPECT_EQ(std::system(command.c_str()), 0) << folder.read("out");
    }

    /// Columns 5 to 12 of these rows, "·" between the columns, one line a row.
    std::string lines(TextView path, int first, int last)
    {
        const auto application = engine.create();
        Worksheet& sheet = application->open(path).worksheet(1);
        Text text;
        for (int row = first; row <= last; ++row)
            for (int column = 5; column <= 12; ++column) text += sheet.cell(row, column) + (column < 12 ? U"·" : U"\n");
        return to_utf8(text);
    }

    bool unchanged(const std::string& name) const
    {
        std::ifstream file(samples.parent_path() / name, std::ios::binary);
        return folder.read(name) == std::string(std::istreambuf_iterator<char>(file), {});
    }
};

TEST_F(RepairSamples, order_fills_the_sheets_with_records_and_leaves_the_originals)
{
    play("order.play");
    EXPECT_EQ(lines(U"Atarvik output/A临溪县人民医院送修单.xlsx", 12, 15),
              "|一只风扇停转|上电后反复重启·|换风扇|换电源，换cpu·|30007309|30003409|30001389·6·120·50·20·266.76\n"
              "|风扇告警·|清洁后换风扇·|30007309·3·80·45·15·196.56\n"
              "|无法上电·|换电源·|30003420·1·150·45·12·290.63\n"
              "|整排灯不亮·|换灯板，换主板·|20000473·1·310.5·45·15·520.18\n");
    EXPECT_EQ(lines(U"Atarvik output/A望海港务集团送修单.xlsx", 15, 17),
              "元器件老化·|报废·|·0·0·0·12·16.85\n···0··50·10·84.24\n|主板烧毁·|原样返还客户·|·0·0·0·30·42.12\n");
    EXPECT_TRUE(unchanged("维修/送修单/临溪县人民医院送修单.xlsx"));
    EXPECT_FALSE(files.file_exists(U"Atarvik output/A双河水务集团送修单.xlsx"));
    EXPECT_EQ(lines(U"维修/送修单/双河水务集团送修单.xlsx", 12, 14), "·······\n···0··50·10·84.24\n·······\n");
}

TEST_F(RepairSamples, prices_give_further_records_lines_of_their_own)
{
    play("prices.play");
    EXPECT_EQ(lines(U"Atarvik output/A望海港务集团报价单.xlsx", 12, 16),
              "保险熔断·换保险·30005129·1·6·35·10·51\n芯片击穿·换以太网转换芯片······\n电源损坏·换电源······\n"
              "收光无信号·换光模块·30003358·1·140·45·12·197\n·······\n");
    EXPECT_TRUE(unchanged("维修/报价单/望海港务集团报价单.xlsx"));
}

} // namespace
} // namespace tarvik::test
