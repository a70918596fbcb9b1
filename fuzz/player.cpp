#include "playback/player.h"
#include "fuzz/only_here.h"
#include "fuzz/target.h"
#include "tests/support/test_program.h"

#include <sstream>

namespace tarvik::fuzz {
namespace {

namespace fs = std::filesystem;

/// Scripts name files anywhere, so nothing is searched where they could be changed.
void confine()
{
    const char* corpus = std::getenv("TARVIK_FUZZ_FOLDER"); // where the search keeps what it finds
    if (!corpus) return;                                    // the seeds are tame
    require(write_only_in({fs::temp_directory_path(), corpus}), "this system confines no process");
}

} // namespace
} // namespace tarvik::fuzz

/// A script over a scratch folder plays to its end or ends with a message.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tarvik;
    static const bool is_confined = (fuzz::confine(), true);
    static_cast<void>(is_confined);
    const test::TemporaryFolder scratch;
    Options options;
    options.installation = scratch.path() / "installation";
    fuzz::fs::copy(TARVIK_SAMPLES, options.installation, fuzz::fs::copy_options::recursive);
    for (char letter = 'a'; letter <= 'z'; ++letter) options.drives[letter] = scratch.path();
    options.clock = {};
    options.print_to = scratch.path();
    options.engine = Engine::Ooxml;
    std::istringstream script{std::string(fuzz::bytes_of_input(data, size))};
    std::ostringstream out, errors;
    const int status = play(options, script, out, errors);
    fuzz::require(status == 0 || !errors.str().empty(), "who fails says why");
    return 0;
}
