#include "columns/columns.h"

#include "columns/rows.h"
#include "columns/views.h"
#include "platform/background.h"
#include "platform/text/text_index.h"

#include <algorithm>
#include <functional>

namespace tarvik {

namespace {

constexpr std::size_t last_cleared_hit = 700'000;
constexpr std::size_t rows_worth_a_thread = 20'000;

/// The distinct rows in the order of their last copies, and how many other copies there were.
struct DistinctRows {
    std::vector<TextView> rows;
    std::int64_t duplicates = 0;
};

/// Rows of one document have one storage, so that their bytes tell them apart.
std::size_t byte_hash(TextView row)
{
    constexpr std::size_t usual_row = 4096;
    if (row.size() > usual_row) return row.hash();
    return std::hash<std::string_view>()({static_cast<const char*>(row.data()), row.size() * row.width()});
}

/// Lays the hits into rowhits and empties there all but the last copy of each. The entry behind the last hit, which an
/// earlier query may have left, counts as a copy.
DistinctRows remove_duplicates(TextArray& rowhits, const std::vector<TextView>& hits, const SharedBuffer& buffer)
{
    rowhits.clear(0, last_cleared_hit);
    const TextView left = rowhits.get(hits.size());
    TextIndex seen(hits.size());
    std::vector<std::size_t> hashes(hits.size());
    in_halves(hits.size(), rows_worth_a_thread, [&](std::size_t first, std::size_t behind) {
        std::transform(hits.data() + first, hits.data() + behind, hashes.data() + first, byte_hash);
    });
    DistinctRows distinct;
    distinct.rows.reserve(hits.size());
    for (std::size_t i = hits.size(); i-- > 0;) {
        const TextView hit = hits[i];
        const bool last_copy = !hit.empty() && hit != left && seen.insert(hit, hashes[i]).is_new;
        rowhits.set(i, last_copy ? hit : TextView(), buffer);
        if (last_copy) distinct.rows.push_back(hit);
        else if (!hit.empty()) distinct.duplicates += 1;
    }
    std::ranges::reverse(distinct.rows);
    return distinct;
}

/// Stores the rows and their closing row and shows them. Gives false when there are more than a table holds.
bool deliver_rows(Program& program, ScratchFile& file, const std::vector<TextView>& rows, const SharedBuffer& buffer)
{
    Form1& form1 = program.form1;
    RowTexts& table = form1.comp ? program.module1.sugrow : program.module1.sufrow;
    const auto view = std::make_shared<RowView>(std::vector{buffer});
    if (form1.showdata) view->reserve(rows.size() + 1);
    for (std::size_t r = 0; r <= rows.size(); ++r) {
        const TextView row = r < rows.size() ? rows[r] : TextView(U"");
        if (form1.showdata) view->add_row(row);
        else form1.number_box().set_text(number_text(r));
        if (r > table.last()) {
            tell(program, U"目前，记录行已经超过软件所设定的阀值：300000条，请重试。");
            file.write(*view); // with the row that is too many; the pane stays as it is
            return false;
        }
        table.set_line(r, row, buffer);
    }
    show_view(program, file, view);
    return true;
}

/// The scan of the open document and its delivery.
ScanResult query_document(Program& program, ScratchFile& file, TextView text)
{
    Form1& form1 = program.form1;
    const Text needle = lower(ltrim(text));
    const Document document = form1.RichTextBox2.document();
    const SharedBuffer& buffer = document.lowered_buffer();
    TextArray& rowhits = program.module1.rowhits;

    RowScan scan = scan_rows(document.lowered(), needle, rowhits.last() + 1, document.index());
    form1.resultcount = scan.matches;
    if (scan.matches > 0) bring_up(form1, form1.RichTextBox3);
    if (scan.full)
        tell(program, U" 请注意：\r\n查寻到的记录已经超过软件所设定的阀值：1000001条，只保留此前查寻到的记录。");
    const DistinctRows distinct = remove_duplicates(rowhits, scan.rows, buffer);
    scan.rows = {};
    if (!deliver_rows(program, file, distinct.rows, buffer)) return {0, ScanOutcome::TooMany};

    const auto count = static_cast<int>(distinct.rows.size());
    if (form1.comp) form1.sugrows = form1.sugcount = count;
    else form1.sufcount = form1.sufrows = form1.curcount = count;
    form1.number_box().set_text(number_text(form1.resultcount - distinct.duplicates));
    return {count, ScanOutcome::Done};
}

} // namespace

ScanResult query1(Program& program, TextView text, bool announces)
{
    Form1& form1 = program.form1;
    form1.RichTextBox3.set_text(U"\r\n");
    ScratchFile file(program, U"betweenp.txt");
    ScanResult result{0, ScanOutcome::Refused};
    if (no_option_selected(form1)) {
        if (form1.query_box().text().empty()) {
            tell(program, U"查寻条件为空");
        } else {
            result = query_document(program, file, text);
            if (result.outcome == ScanOutcome::TooMany) return result;
        }
    }
    form1.dbresult = true;
    if (announces) tell(program, U" 温情提示：\r\n含有查寻字符串且彼此不相同的数据行记录集合。", U"Tarvik 计算 ");
    program.form3.window.set_visible(true);
    program.form3.window.request_front();
    return result;
}

void column_query(Program& program)
{
    query1(program, program.form1.query_box().text(), true);
}

} // namespace tarvik
