#include "engines/suite/com_object.h"
#include "tests/engines/suite/stand_in/applications.h"

#include <fstream>
#include <map>
#include <memory>

namespace tarvik::test {

namespace {

constexpr int rows = 3, columns = 2;
constexpr int package_format = 12, binary_format = 0;
constexpr HRESULT no_such_member = static_cast<HRESULT>(0x800a1735);
constexpr double width = 200, padding = 5, page_height = 800, margin = 50; // in points

/// A document of one table, whose saved file is a list of what its cells hold.
struct Document {
    Server& server;
    int format;
    std::map<std::pair<int, int>, std::wstring> cells{};
};
using HeldDocument = std::shared_ptr<Document>;

/// A stretch of a cell's text; behind the text stands the mark of the cell's end.
struct Range {
    HeldDocument document;
    std::pair<int, int> cell;
    int start = 0, end = 0;

    std::wstring& text() const { return document->cells[cell]; }
};
using HeldRange = std::shared_ptr<Range>;

ComValue make_page(Server& server)
{
    const auto gives = [](double points) { return [points](const Call&) { return ComValue(points); }; };
    return ServedObject::make(
        server, "PageSetup",
        {{L"PageHeight", gives(page_height)}, {L"TopMargin", gives(margin)}, {L"BottomMargin", gives(margin)}});
}

ComValue make_range(const HeldRange& range)
{
    Server& server = range->document->server;
    return ServedObject::make(server, "Range",
                              {{L"Text",
                                [range](const Call& call) {
                                    const VARIANT& raw = call.arguments.at(0).raw();
                                    range->text().assign(raw.bstrVal, ::SysStringLen(raw.bstrVal));
                                    return ComValue();
                                }},
                               {L"PageSetup", [&server](const Call&) { return make_page(server); }},
                               {L"Start", [range](const Call&) { return ComValue(range->start); }},
                               {L"End", [range](const Call&) { return ComValue(range->end); }},
                               {L"MoveEnd",
                                [range](const Call& call) {
                                    range->end += call.arguments.at(1).as_count();
                                    return ComValue();
                                }},
                               {L"InsertAfter",
                                [range](const Call& call) {
                                    const VARIANT& raw = call.arguments.at(0).raw();
                                    range->text().insert(static_cast<std::size_t>(range->end), raw.bstrVal);
                                    range->end += static_cast<int>(::SysStringLen(raw.bstrVal));
                                    return ComValue();
                                }},
                               {L"Collapse",
                                [range](const Call& call) {
                                    const bool to_the_end = call.arguments.at(0).as_count() == 0;
                                    (to_the_end ? range->start : range->end) = to_the_end ? range->end : range->start;
                                    return ComValue();
                                }},
                               // not of the object model: how the stand-in itself gets at what stands behind a range
                               {L"Insert", [range](const Call& call) {
                                    if (range->start != range->end)
                                        throw Refused{E_INVALIDARG, L"the range would be replaced"};
                                    range->text().insert(static_cast<std::size_t>(range->end),
                                                         call.arguments.at(0).raw().bstrVal);
                                    return ComValue();
                                }}});
}

ComValue make_cell(const HeldDocument& document, int row, int column)
{
    if (row > rows || column > columns) throw Refused{no_such_member, L"集合所要求的成员不存在。"};
    const auto gives = [](double points) { return [points](const Call&) { return ComValue(points); }; };
    return ServedObject::make(document->server, "Cell",
                              {{L"Width", gives(width)},
                               {L"LeftPadding", gives(padding)},
                               {L"RightPadding", gives(padding)},
                               {L"Range", [document, row, column](const Call&) {
                                    const auto range = std::make_shared<Range>(Range{document, {row, column}});
                                    range->end = static_cast<int>(range->text().size()) + 1;
                                    return make_range(range);
                                }}});
}

ComValue make_tables(const HeldDocument& document)
{
    const auto make_table = [document](const Call&) {
        return ServedObject::make(document->server, "Table", {{L"Cell", [document](const Call& call) {
                                                                   return make_cell(document,
                                                                                    call.arguments.at(0).as_count(),
                                                                                    call.arguments.at(1).as_count());
                                                               }}});
    };
    return ServedObject::make(document->server, "Tables",
                              {{L"Count", [](const Call&) { return ComValue(1); }}, {L"Item", make_table}});
}

void insert(const ComValue& range, const std::wstring& text)
{
    const windows::ComObject place(range);
    place.call(L"Insert", {ComValue(std::filesystem::path(text))});
}

ComValue make_pictures(const HeldDocument& document)
{
    const auto add = [document](const Call& call) {
        const auto picture = path_in(call.arguments.at(0));
        insert(call.arguments.at(3), L"[" + std::to_wstring(bytes_of(picture).size()) + L" bytes]");
        const auto nothing = [](const Call&) { return ComValue(); };
        return ServedObject::make(document->server, "InlineShape",
                                  {{L"LockAspectRatio", nothing}, {L"Width", nothing}, {L"Height", nothing}});
    };
    return ServedObject::make(document->server, "InlineShapes", {{L"AddPicture", add}});
}

void save(const Document& document, const std::filesystem::path& path)
{
    std::ofstream file(path, std::ios::binary);
    file << "PK\x03\x04\n";
    for (const auto& [cell, text] : document.cells)
        file << cell.first << "," << cell.second << ": " << to_bytes(text) << "\n";
}

ComValue make_document(const HeldDocument& document)
{
    const auto nothing = [](const Call&) { return ComValue(); };
    return ServedObject::make(document->server, "Document",
                              {{L"SaveFormat", [document](const Call&) { return ComValue(document->format); }},
                               {L"Tables", [document](const Call&) { return make_tables(document); }},
                               {L"InlineShapes", [document](const Call&) { return make_pictures(document); }},
                               {L"SaveAs",
                                [document](const Call& call) {
                                    save(*document, path_in(call.arguments.at(0)));
                                    return ComValue();
                                }},
                               {L"PrintOut", nothing},
                               {L"Close", nothing}});
}

} // namespace

ComValue make_document_application(Server& server)
{
    return ServedObject::make(server, "Application", application_members(server, L"Documents", [&server](const Call&) {
                                  return ServedObject::make(
                                      server, "Documents",
                                      {{L"Open", [&server](const Call& call) {
                                            const bool is_package =
                                                bytes_of(path_in(call.arguments.at(0))).starts_with("PK");
                                            return make_document(std::make_shared<Document>(
                                                Document{server, is_package ? package_format : binary_format}));
                                        }}});
                              }));
}

} // namespace tarvik::test
