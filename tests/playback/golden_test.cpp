#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

/// Scripts with the transcripts that they gave when somebody looked them over. The real program plays each over a copy
/// of golden/installation. With TARVIK_REFRESH=1 in the environment the transcripts are written anew; the change is
/// then looked over in the diff.
namespace tarvik {

namespace {

namespace fs = std::filesystem;

const fs::path golden = fs::path(TARVIK_SOURCE_DIR) / "tests/playback/golden";

std::vector<std::string> scripts()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(golden))
        if (entry.path().extension() == ".play") names.push_back(entry.path().stem().string());
    std::ranges::sort(names);
    return names;
}

std::string contents(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The transcript, what was told on standard error, and the exit status. The folders of the moment show as names.
std::string play(const std::string& script)
{
    const test::TemporaryFolder folder;
    fs::copy(golden / "installation", folder.path() / "installation", fs::copy_options::recursive);
    fs::create_directory(folder.path() / "d");
    const std::string root = folder.path().string();
    const std::string command = "'" TARVIK_INSTALLATION "/tarvik-play' --install " + root +
                                "/installation --drive d=" + root + "/d --clock '2024-03-01 09:05:07' " +
                                (golden / (script + ".play")).string() + " >" + root + "/out 2>" + root + "/err";
    const int status = std::system(command.c_str());
    std::string transcript = folder.read("out");
    for (std::size_t at = 0; (at = transcript.find(root, at)) != std::string::npos;)
        transcript.replace(at, root.size(), "$");
    const std::string errors = folder.read("err");
    return transcript + (errors.empty() ? "" : "standard error:\n" + errors) + "status " +
           std::to_string(WEXITSTATUS(status)) + "\n";
}

class Golden : public testing::TestWithParam<std::string> {};

} // namespace

TEST_P(Golden, GivesItsTranscript)
{
    const fs::path transcript = golden / (GetParam() + ".out");
    const std::string played = play(GetParam());
    if (const char* refresh = std::getenv("TARVIK_REFRESH"); refresh && *refresh == '1') {
        std::ofstream(transcript, std::ios::binary) << played;
        return;
    }
    EXPECT_EQ(played, contents(transcript)) << "TARVIK_REFRESH=1 writes it anew";
}

INSTANTIATE_TEST_SUITE_P(Scripts, Golden, testing::ValuesIn(scripts()),
                         [](const auto& script) { return script.param; });

} // namespace tarvik
