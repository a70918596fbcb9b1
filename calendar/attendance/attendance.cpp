#include "calendar/attendance/attendance.h"

#include "calendar/calendar.h"
#include "columns/columns.h"
#include "columns/views.h"
#include "runs/report_commands.h"

#include <array>
#include <cmath>

namespace tarvik {

namespace {

constexpr std::u32string_view department = U"系统设备制造部";
constexpr std::size_t person_column = 3, first_stamp_column = 7, last_stamp_column = 8;

/// Hundredths of an hour, as exact as stamps are: in hours a span of 9 may come out above 9.
using Hundredths = long;

constexpr Hundredths latest_arrival = 850, earliest_leaving = 1750, overtime_starts = 1800;
constexpr Hundredths normal_span_above = 900, normal_span_up_to = 960, half_day_span = 450, span_limit = 2400;
constexpr Hundredths one_stamp_below = 1150; // it stands in both columns
constexpr Hundredths lunch_break = 100;

constexpr std::array<std::u32string_view, 7> weekdays{U"星期四", U"星期五", U"星期六", U"星期日",
                                                      U"星期一", U"星期二", U"星期三"};

std::optional<double> digits(TextView text)
{
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] < U'0' || text[i] > U'9') return std::nullopt;
    return number(text);
}

struct Stamp {
    TextView date, time;
};

std::optional<Stamp> cut(TextView stamp)
{
    const std::size_t blank = instr(stamp, U" "), stop = instr(stamp, U".");
    if (blank == 0 || stop < blank) return std::nullopt;
    return Stamp{mid(stamp, 1, blank - 1), mid(stamp, blank + 1, stop - blank - 1)};
}

std::optional<std::u32string_view> weekday(TextView date)
{
    const auto year = digits(mid(date, 1, 4)), month = digits(mid(date, 6, 2)), day = digits(mid(date, 9, 2));
    // A day behind the last of its month counts on from there.
    if (!year || !month || !day || *month < 1 || *month > 12) return std::nullopt;
    return weekdays[static_cast<std::size_t>(fenmod(7, steaddaf(2016, 9, 22, *year, *month, *day)))];
}

std::optional<double> hours(TextView time)
{
    const std::size_t hour_digits = time.size() == 8 ? 2 : 1;
    // A clock may pad the hour with a blank.
    const auto hour = digits(ltrim(mid(time, 1, hour_digits))), minutes = digits(mid(time, hour_digits + 2, 2));
    if (!hour || !minutes) return std::nullopt;
    double fraction = *minutes / 60;
    return *hour + leading_number(wct(fraction));
}

Text hours_text(Hundredths span)
{
    double hours = static_cast<double>(span) / 100;
    return wcnum(leading_number(wct(hours)));
}

struct Verdict {
    std::u32string_view status;
    Text hours;
};

/// `a` and `b` are the times of the first and the last stamp, `status` what they say by themselves.
std::optional<Verdict> judge(Hundredths a, Hundredths b, std::u32string_view status)
{
    const Hundredths span = b - a;
    const Text worked = hours_text(span - lunch_break);
    if (span > normal_span_above && span <= normal_span_up_to) return Verdict{U"正常", worked};
    if (span >= span_limit) return std::nullopt;
    if (span > normal_span_up_to && b > overtime_starts) return Verdict{U"加班", hours_text(b - overtime_starts)};
    if (span > normal_span_up_to) return Verdict{U"正常", worked};
    if (span == 0 && b < one_stamp_below) return Verdict{U"异常", worked};
    if (span < half_day_span) return Verdict{U"旷工", worked};
    return Verdict{status, worked};
}

std::u32string_view first_status(Hundredths a, Hundredths b)
{
    const bool late = a > latest_arrival;
    if (b < earliest_leaving) return late ? U"倒退" : U"早退";
    return late ? U"迟到" : U"正常";
}

/// A row whose stamps cannot be read goes to `unread`, with the person and the stamp.
void add_row(Program& program, std::size_t row, RowView& lines, RowList& unread)
{
    const Table& suf = program.module1.suf;
    Form1& form1 = program.form1;
    const TextView first = suf.cell(row, first_stamp_column), last = suf.cell(row, last_stamp_column);
    if (first.empty() || last.empty()) return;
    const auto a = kqtest(program, first);
    const auto b = a ? kqtest(program, last) : std::nullopt;
    if (!b) return unread.add_entry(suf.cell(row, person_column).str() + U"：" + (a ? last : first));
    const Hundredths arrival = std::lround(*a * 100), leaving = std::lround(*b * 100);
    const std::u32string_view status = first_status(arrival, leaving);
    const auto verdict = judge(arrival, leaving, status);
    if (!verdict) return;
    form1.compcount += 1;
    lines.add_cell({}, suf.cell(row, person_column),
                   U"\t" + form1.kqdate + U"\t" + form1.kqweekday + U"\t" + Text(arrival_label) + cut(first)->time +
                       U"\t" + Text(status) + U"\t下班打卡：" + form1.kqtime + U"\t" + Text(verdict->status) + U"\t" +
                       verdict->hours);
}

} // namespace

std::optional<double> kqtest(Program& program, TextView stamp)
{
    const auto pieces = cut(stamp);
    if (!pieces) return std::nullopt;
    const auto day = weekday(pieces->date);
    const auto time = hours(pieces->time);
    if (!day || !time) return std::nullopt;
    program.form1.kqdate = pieces->date.str();
    program.form1.kqtime = pieces->time.str();
    program.form1.kqweekday = Text(*day);
    return time;
}

void an_kqtest(Program& program)
{
    Form1& form1 = program.form1;
    if (form1.comp) {
        tell(program, U" 温情提示：\r\n请先将comp设置为FALSE（按键e），然后进行考勤分析。", application_title,
             Icon::Information);
        return;
    }
    ScratchFile file(program, U"between31.txt");
    const ScanResult scan = query1(program, department);
    check_scan(program, scan.outcome);
    devision1(program);
    form1.compcount = 0;
    const auto lines = std::make_shared<RowView>(program.module1.suf.buffers());
    RowList unread;
    const auto rows = static_cast<std::size_t>(scan.rows);
    for (std::size_t row = 0; row < rows; ++row) add_row(program, row, *lines, unread);
    show_view(program, file, lines);
    form1.number_box().set_text(number_text(form1.compcount));
    if (unread.count() > 0) tell(program, U" 温情提示：\r\n以下打卡时间不能识别，已经略过：" + unread.text());
}

} // namespace tarvik
