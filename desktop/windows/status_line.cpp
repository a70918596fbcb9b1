#include "desktop/windows/status_line.h"

#include "desktop/look/qt_text.h"
#include "mainwindow/installation_files.h"
#include "runs/batch_runner.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <functional>

namespace tarvik {

namespace {

const QString between = "  ·  ";

QString count(double number)
{
    return QLocale::c().toString(static_cast<qlonglong>(number));
}

QString document_text(const Program& program)
{
    const OpenedFile& opened = program.opened;
    if (opened.path.empty()) return "没有打开文档";
    // The line end that every document gets when it is opened is nobody's.
    const double characters = std::max(0.0, static_cast<double>(program.form1.RichTextBox2.content().size()) - 2);
    const QString line_ends = opened.lines_ended_in_lf ? "LF 行尾" : "CR LF 行尾";
    QString text = QFileInfo(to_qt(opened.path).replace('\\', '/')).fileName() + between +
                   to_qt(TextView(opened.encoding)) + between + line_ends + between + count(characters) + " 字" +
                   between;
    return text + QString("第 %1 页，末页 %2").arg(count(program.form1.pageno), count(program.form1.lastpage));
}

QString result_text(const Program& program)
{
    const auto shown = shown_result(program);
    if (!shown) return {};
    return QString("第 %1 处，共 %2 处，在第 %3 页（F5 或单击到该页）")
        .arg(count(static_cast<double>(shown->number)), count(static_cast<double>(program.form1.resultcount)),
             count(shown->page));
}

QString table_text(const Form1& form1)
{
    if (!form1.dbresult) return {};
    QString text = form1.comp
                       ? QString("suG %1 行（suF %2 行），双表").arg(count(form1.sugcount), count(form1.sufcount))
                       : QString("suF %1 行，单表").arg(count(form1.sufcount));
    if (form1.comp) text += between + (form1.notcap ? "不∩" : "∩");
    return text + between + (form1.showdata ? "显示数据" : "不显示数据");
}

QString blocking_option(const Form1& form1)
{
    for (const OptionButton* option : {&form1.Option1, &form1.Option2, &form1.Option3})
        if (option->value()) return "已选“" + to_qt(option->caption()) + "”，Esc 不查寻数据列";
    return {};
}

// The folder that holds all of them: sheets can lie in folders of their own. Empty where they lie on several drives.
QString common_folder(const QStringList& files)
{
    QString folder = QFileInfo(files.front()).absolutePath();
    for (const QString& file : files) {
        while (!QDir::fromNativeSeparators(file).startsWith(folder.endsWith('/') ? folder : folder + '/')) {
            const QString above = QFileInfo(folder).absolutePath();
            if (above == folder) return {};
            folder = above;
        }
    }
    return folder;
}

} // namespace

std::optional<ShownResult> shown_result(const Program& program)
{
    const Form1& form1 = program.form1;
    const bool in_document = form1.Option3.value() || no_option_selected(form1);
    if (!in_document || !form1.RichTextBox1.visible() || form1.resultcount == 0) return std::nullopt;
    const TextArray& results = form1.Option3.value() ? program.module1.filehits : program.module1.hits;
    const Document& document = form1.RichTextBox2.document();
    const TextView all = form1.Option3.value() ? document.text() : document.lowered();
    const TextView shown = form1.RichTextBox1.content().view();
    for (std::int64_t index = std::max<std::int64_t>(form1.resultpos - 1, 0); index <= form1.resultpos; ++index) {
        const TextView piece = results.get(static_cast<std::size_t>(index));
        if (piece.empty() || piece.size() != shown.size() || piece != shown) continue;
        const auto* const begin = static_cast<const char*>(all.data());
        const auto* const at = static_cast<const char*>(piece.data());
        const auto offset = static_cast<std::size_t>(at - begin) / all.width();
        if (std::less<>()(at, begin) || offset >= all.size()) return std::nullopt; // of an earlier document
        const double page_size = std::floor(leading_number(form1.page_size_box().text()));
        return ShownResult{index + 1, page_size >= 1 ? std::floor(static_cast<double>(offset) / page_size) : 0};
    }
    return std::nullopt;
}

QString state_text(const Program& program, bool edited)
{
    QStringList parts{result_text(program), document_text(program), table_text(program.form1),
                      blocking_option(program.form1)};
    if (edited) parts += "已修改";
    parts.removeAll(QString());
    return parts.join(between);
}

QString run_text(Program& program)
{
    const Form1& form1 = program.form1;
    const int all = form1.Timer9.enabled() ? form1.rowcount : form1.keycount;
    const int done = form1.Timer9.enabled() ? form1.sheetno : std::clamp(form1.batchcursor, 0, all);
    QString text = QString("运行中：%1 / %2").arg(count(done), count(all));
    const bool key_at_hand = !form1.Timer9.enabled() && form1.batchcursor >= 0 && done < all;
    if (key_at_hand)
        text += between + to_qt(program.module1.keylist.get(static_cast<std::size_t>(form1.batchcursor)).str());
    const double elapsed = seconds_elapsed(program);
    if (done >= 1 && elapsed >= 1) {
        const double left = (all - done) * elapsed / done;
        text += between + (left < 90 ? QString("约剩 %1 秒").arg(count(left))
                                     : QString("约剩 %1 分").arg(count(left / 60 + 0.5)));
    }
    return text;
}

QString output_folder(const Program& program)
{
    const Text& folder = program.form1.outfolder;
    return real_path(program.platform.files, folder.empty() ? TextView(files::default_output) : TextView(folder));
}

RunEnd run_end(const Program& program, bool wished, QString told)
{
    const RunRecord& run = program.run;
    RunEnd end;
    QString reason = told.remove("请注意：").simplified();
    if (reason.isEmpty()) reason = "没有做完";
    QStringList parts{wished ? "已按要求停止" : run.stopped ? "运行停止：" + reason : "运行结束"};
    parts += QString("存了 %1 个文件").arg(run.files.size());
    for (const Text& file : run.files) end.details += QDir::toNativeSeparators(real_path(program.platform.files, file));
    if (!run.files.empty()) {
        end.folder = common_folder(end.details);
        if (!end.folder.isEmpty()) parts += "单击打开 " + QDir::toNativeSeparators(end.folder);
    }
    if (run.older_layouts > 0)
        parts += QString("框中已不是命令，%1 张改用旧版式，存在存储路径下").arg(run.older_layouts);
    if (run.ahead_of_command) parts += "命令之前有别的文字，所以没有保存";
    if (!run.passed.empty()) {
        parts += QString("%1 个关键字没有出单").arg(run.passed.size());
        for (const RunRecord::Passed& passed : run.passed)
            end.details += to_qt(passed.key) + "：没有出单，" + to_qt(passed.reason).simplified();
    }
    if (run.not_reached > 0) parts += QString("%1 个关键字没有轮到").arg(run.not_reached);
    end.text = parts.join(between);
    return end;
}

QString key_hint(const Form1& form1)
{
    if (!form1.dbresult) return {};
    return form1.comp
               ? "按键：Esc 查寻 · q 拆列 · p 比较 · ; 不∩ · : ∩ · e 单表 · , . 显示与否 · ? 说明 · F4 改为键入"
               : "按键：Esc 查寻 · q 拆列 · z 排序 · / 统计 · p 比较 · c 双表 · , . 显示与否 · ? 说明 · F4 改为键入";
}

} // namespace tarvik
