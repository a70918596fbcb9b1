#include "tests/support/places.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

/// Scripts with the transcripts that they gave when somebody looked them over. The real program plays those of golden/
/// over a copy of golden/installation. The ones that the program comes with are played over a copy of its installation
/// folder when golden/samples/ has a transcript for them, which also lists the files that they wrote and what another
/// reader finds in the first that they made. With TARVIK_REFRESH=1 in the environment the transcripts are written anew;
/// the change is then looked over in the diff.
namespace tarvik {

namespace {

namespace fs = std::filesystem;

const fs::path golden = fs::path(test::source_folder()) / "tests/playback/golden";

const fs::path shipped = fs::path(test::source_folder()) / "installation";

/// A script, the installation folder that it is played over, and its transcript.
struct Script {
    std::string name;
    fs::path script, installation, transcript;
    bool tells_files = false;
};

std::vector<std::string> names(const fs::path& folder, const std::string& extension)
{
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == extension) found.push_back(entry.path().stem().string());
    std::ranges::sort(found);
    return found;
}

std::vector<Script> scripts()
{
    std::vector<Script> found;
    for (const std::string& name : names(golden, ".play"))
        found.push_back({name, golden / (name + ".play"), golden / "installation", golden / (name + ".out")});
    for (const std::string& name : names(golden / "samples", ".out"))
        found.push_back(
            {"shipped_" + name, shipped / (name + ".play"), shipped, golden / "samples" / (name + ".out"), true});
    return found;
}

std::string contents(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What a script left: what is new or other in the installation folder, the files that it made below d, and what the
/// first of these holds.
std::string files_told(const fs::path& root)
{
    std::string told = "written in the installation folder:\n";
    for (const auto& [file, held] : test::files_below(root / "installation"))
        if (held != contents(shipped / file)) told += file + "\n";
    const auto files = test::files_below(root / "d");
    told += "files:\n";
    for (const auto& [file, held] : files) told += file + "\n";
    if (files.empty()) return told;
    const std::string& first = files.begin()->first;
    return told + "the first of them:\n" +
           test::read_by_python(first.ends_with(".doc") ? "tests/engines/documents/read_document.py"
                                                        : "tests/engines/spreadsheets/read_workbook.py",
                                root / "d" / first);
}

// The transcript, what was reported on standard error, and the exit status. The folders of the moment show as names.
std::string play(const Script& script)
{
    const test::TemporaryFolder folder;
    fs::copy(script.installation, folder.path() / "installation", fs::copy_options::recursive);
    fs::create_directory(folder.path() / "d");
    const std::string options = "--clock '2024-03-01 09:05:07' --print-to " + folder.path().string() + "/printed";
    if (script.script.stem() == "print") test::play_script(shipped / "docket.play", folder.path(), options);
    const auto [out, errors, status] = test::play_script(script.script, folder.path(), options);
    return test::replaced(out, folder.path().string(), "$") + (errors.empty() ? "" : "standard error:\n" + errors) +
           "status " + std::to_string(WEXITSTATUS(status)) + "\n" +
           (script.tells_files ? files_told(folder.path()) : "");
}

class Golden : public testing::TestWithParam<Script> {};

} // namespace

TEST_P(Golden, gives_its_transcript)
{
    const fs::path& transcript = GetParam().transcript;
    const std::string played = play(GetParam());
    if (const char* refresh = std::getenv("TARVIK_REFRESH"); refresh && *refresh == '1') {
        std::ofstream(transcript, std::ios::binary) << played;
        return;
    }
    EXPECT_EQ(played, contents(transcript)) << "TARVIK_REFRESH=1 writes it anew";
}

INSTANTIATE_TEST_SUITE_P(Scripts, Golden, testing::ValuesIn(scripts()),
                         [](const auto& script) { return script.param.name; });

} // namespace tarvik
