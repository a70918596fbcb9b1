#include "dictionary_tool/dictionary_files.h"
#include "platform/files/paths.h"
#include "platform/text/code_page.h"
#include "reading/reading.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <zlib.h>

namespace tarvik::test {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;
using namespace std::string_literals;

class DictionaryTool : public ::testing::Test {
protected:
    TestProgram test;
    TemporaryFolder source;

    void lay_out(const DictionaryFiles& files)
    {
        for (const auto& [name, bytes] : files.bytes()) test.installation.write(to_utf8(name), bytes);
    }
    /// The entries that a lookup finds, the line ends shown as "|".
    std::vector<std::string> look_up(OptionButton& option, TextView word)
    {
        Form1& form1 = test.form1();
        select_option(form1, option);
        form1.resultpos = 0;
        form1.query_box().set_text(word.str());
        Command1_Click(test.program, 1);
        std::vector<std::string> found;
        for (std::int64_t i = 0; i < form1.resultcount; ++i) {
            if (i > 0) Command1_Click(test.program, 2);
            std::string entry = to_utf8(form1.RichTextBox1.text());
            for (std::size_t end = 0; (end = entry.find("\r\n")) != std::string::npos;) entry.replace(end, 2, "|");
            found.push_back(entry);
        }
        return found;
    }
    std::vector<std::pair<std::string, std::string>> read(const std::string& file)
    {
        std::vector<std::pair<std::string, std::string>> entries;
        read_dictionary_source(source.path() / file, [&](const SourceEntry& entry) {
            entries.emplace_back(to_utf8(entry.head), to_utf8(entry.body));
        });
        return entries;
    }
    std::string packed(const std::string& bytes)
    {
        const gzFile file = gzopen(utf8_of(source.path() / "scratch").c_str(), "wb");
        gzwrite(file, bytes.data(), static_cast<unsigned>(bytes.size()));
        gzclose(file);
        return source.read("scratch");
    }
};

std::string big_endian(unsigned number, int width = 4)
{
    std::string bytes;
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
        bytes += shift < 32 ? static_cast<char>(number >> shift) : '\0';
    return bytes;
}

TEST_F(DictionaryTool, a_file_that_unpacks_to_a_gigabyte_is_refused)
{
    const std::string megabytes(std::size_t{64} << 20, ' ');
    gzFile file = gzopen(utf8_of(source.path() / "bomb.dict.dz").c_str(), "wb1");
    for (int i = 0; i < 5; ++i) gzwrite(file, megabytes.data(), static_cast<unsigned>(megabytes.size()));
    gzclose(file);
    source.write("bomb.index", "a\tA\tB\n");
    try {
        read("bomb.index");
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_TRUE(TextView(failure.message()).contains(U"256 MB")) << failure.what();
    }
}

TEST_F(DictionaryTool, every_head_word_is_found_whole_and_marked)
{
    DictionaryFiles files(DictionaryUse::English, U"小词典");
    const char32_t* heads[] = {U"Axe", U"a.m.", U"ab", U"azure?", U"'Tis", U"卡拉OK", U"斧", U"3D", U"-able"};
    for (const char32_t* head : heads)
        ASSERT_TRUE(files.add({head, head + Text(U"\nA line.\nWhat?\n\tEnd!\r\n\n")})) << to_utf8(head);
    ASSERT_FALSE(files.add({U" \n", U"nothing"}));
    ASSERT_TRUE(files.add({U"Axle", Text(40, U'-') + U" afar"}));
    lay_out(files);

    Form1& form1 = test.form1();
    EXPECT_THAT(look_up(form1.Option2, U"axe"), ElementsAre(" Axe |A line. |What? | End!."));
    EXPECT_EQ(form1.RichTextBox1.marks().size(), 1U);
    EXPECT_THAT(look_up(form1.Option2, U"A.M."), ElementsAre(" a.m. |A line. |What? | End!."));
    EXPECT_THAT(look_up(form1.Option2, U"azure?"), ::testing::SizeIs(1));
    for (const char32_t* head : {U"'tis", U"卡拉ok", U"斧"}) {
        const auto found = look_up(form1.Option2, head);
        ASSERT_EQ(found.size(), 1U) << to_utf8(head);
        EXPECT_TRUE(found[0].starts_with(".|" + to_utf8(head) + " |")) << found[0];
    }
    EXPECT_THAT(look_up(form1.Option1, U"3d"), ElementsAre("|3d |3D |A line. |What? | End!。"));
    EXPECT_THAT(look_up(form1.Option1, U"-able"), ElementsAre("|-able |A line. |What? | End!。"));
    EXPECT_THAT(look_up(form1.Option2, U"afar"), ::testing::IsEmpty()) << "a word inside an entry heads none";
}

TEST_F(DictionaryTool, a_long_entry_comes_in_parts_that_hold_all_of_it)
{
    DictionaryFiles files(DictionaryUse::Chinese, U"长");
    Text body;
    for (int i = 0; i < 6000; ++i) body += number_text(i) + (i % 9 == 0 ? U"。\n" : U" ");
    files.add({U"长", body});
    files.add({U"短", U"不大。"});
    lay_out(files);
    const auto parts = look_up(test.form1().Option1, U"长");
    EXPECT_EQ(parts.size(), 4U);
    std::string all;
    for (const std::string& part : parts) all += part;
    for (int i = 0; i < 6000; ++i) ASSERT_TRUE(all.find(std::to_string(i)) != std::string::npos) << i;
    EXPECT_THAT(look_up(test.form1().Option1, U"短"), ElementsAre("|短 |不大。"));
}

TEST_F(DictionaryTool, stardict_in_its_shapes)
{
    const std::string first = "eins", second = "m<b>&\0"s + "h<b>zwei</b>&amp;<br/>&#x6597;\0"s;
    const auto write = [&](const std::string& name, const std::string& information, int width, bool pack) {
        const auto number = [width](std::size_t value) { return big_endian(static_cast<unsigned>(value), width); };
        source.write(name + ".ifo", "StarDict's dict ifo file\nbookname=" + name + "\r\n" + information);
        source.write(name + ".idx", "一\0"s + number(0) + big_endian(4) + "two\0"s + number(4) +
                                        big_endian(static_cast<unsigned>(second.size())) + "lost\0"s + number(90) +
                                        big_endian(9));
        const std::string text = first + second;
        source.write(name + (pack ? ".dict.dz" : ".dict"), pack ? packed(text) : text);
    };
    write("same", "sametypesequence=m\n", 4, true);
    source.write("same.syn", "deux\0"s + big_endian(1) + "none\0"s + big_endian(7));
    EXPECT_THAT(read("same.ifo"),
                ElementsAre(Pair("一", "eins"), Pair("two", to_utf8(from_utf8(second))), Pair("deux", "见：two")));
    write("each", "idxoffsetbits=64\n", 8, false);
    EXPECT_EQ(read("each.ifo")[1].second, "<b>&\nzwei&\n斗");
    write("pair", "sametypesequence=mh\n", 4, false);
    EXPECT_EQ(read("pair.ifo")[0].second, "eins");
    EXPECT_THROW(read("gone.ifo"), Failure);
}

TEST_F(DictionaryTool, dictd)
{
    const std::string first = packed("infoone\nt");
    source.write("d.dict.dz", first + packed("wo\n")); // in two members
    source.write("d.index", "00-database-info\tA\tE\n一 b\tE\tE\nlost\tZ\tE\nbad\nlast\tI\tE");
    EXPECT_THAT(read("d.index"), ElementsAre(Pair("一 b", "one\n"), Pair("last", "two\n")));
    source.write("d.dict.dz", first.substr(0, first.size() - 9));
    EXPECT_THROW(read("d.index"), Failure) << "cut off";
}

} // namespace
} // namespace tarvik::test
