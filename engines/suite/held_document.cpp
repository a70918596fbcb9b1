#include "engines/suite/held_file.h"

namespace tarvik::windows {

using libreoffice::OpenDocument;
using libreoffice::Size;

const ApplicationKind documents{L"Word.Application", L"WINWORD.EXE", U"Word", 0, {0}};

namespace {

constexpr FormatRow formats[] = {{"MS Word 97", 0, L".doc"}, {"MS Word 2007 XML", 12, L".docx"}};
/// Locked for comments, with a password, among the recent files: none of it.
const std::vector<ComValue> unlisted{false, U"", false};
constexpr HRESULT no_such_member = static_cast<HRESULT>(0x800a1735);
constexpr double hundredths_a_point = 2540.0 / 72;

class HeldDocument final : public HeldFile<OpenDocument> {
public:
    HeldDocument(std::shared_ptr<Application> application, ComObject file)
        : HeldFile(std::move(application), std::move(file), formats, L"SaveFormat", unlisted)
    {
    }

    // In the background it would be cut off when the document is closed.
    libreoffice::Printing print(const std::string& /*printer*/) override
    {
        file().call(L"PrintOut", {false});
        return libreoffice::Printing::Done;
    }
    bool has_table() override { return file().object(L"Tables").get(L"Count").as_count() > 0; }

    bool set_cell_text(int row, int column, const Text& text) override
    {
        const auto cell = cell_at(row, column);
        if (!cell) return false;
        Text told = text;
        for (auto& character : told)
            if (character == U'\n') character = U'\v'; // breaks the line within the paragraph
        cell->object(L"Range").put(L"Text", TextView(told));
        return true;
    }

    std::optional<Size> room_in_cell(int row, int column) override
    {
        const auto cell = cell_at(row, column);
        if (!cell) return std::nullopt;
        const auto page = cell->object(L"Range").object(L"PageSetup");
        const double width = cell->get(L"Width").as_number() - cell->get(L"LeftPadding").as_number() -
                             cell->get(L"RightPadding").as_number();
        const double height = page.get(L"PageHeight").as_number() - page.get(L"TopMargin").as_number() -
                              page.get(L"BottomMargin").as_number();
        return Size{static_cast<int>(width * hundredths_a_point), static_cast<int>(height * hundredths_a_point)};
    }

    // The last character of a cell's range is the mark of its end.
    void add_picture(int row, int column, const std::filesystem::path& picture, Size size) override
    {
        constexpr int by_characters = 1, to_the_end = 0;
        const auto range = cell_at(row, column).value().object(L"Range");
        range.call(L"MoveEnd", {by_characters, -1});
        if (range.get(L"Start").as_count() != range.get(L"End").as_count()) range.call(L"InsertAfter", {U"\r"});
        range.call(L"Collapse", {to_the_end});
        const auto shape =
            file().object(L"InlineShapes").object(L"AddPicture", {ComValue(picture), false, true, range.value()});
        shape.put(L"LockAspectRatio", 0);
        shape.put(L"Width", size.width / hundredths_a_point);
        shape.put(L"Height", size.height / hundredths_a_point);
    }

private:
    std::optional<ComObject> cell_at(int row, int column) const
    {
        if (row < 1 || column < 1) return std::nullopt;
        try {
            return file().object(L"Tables").object(L"Item", {1}).object(L"Cell", {row, column});
        } catch (const Refusal& refusal) {
            if (refusal.number() == no_such_member) return std::nullopt;
            throw;
        }
    }
};

} // namespace

std::unique_ptr<OpenDocument> open_document(std::shared_ptr<Application> application, const std::filesystem::path& path)
{
    auto file = application->object()
                    .object(L"Documents")
                    .object(L"Open", {ComValue(path), false, false, false, U"", U"", false, U"", U""});
    return std::make_unique<HeldDocument>(std::move(application), std::move(file));
}

} // namespace tarvik::windows
