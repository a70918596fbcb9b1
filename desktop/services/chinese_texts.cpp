#include "desktop/services/chinese_texts.h"

#include <algorithm>
#include <string_view>

namespace tarvik {

namespace {

struct Word {
    std::string_view source;
    const char* chinese;
};

// By source text alone: the toolkit uses the same words under several contexts, some with a mark for a shortcut.
constexpr Word words[] = {
    {"OK", "确定"},
    {"Cancel", "取消"},
    {"Yes", "是"},
    {"No", "否"},
    {"Open", "打开"},
    {"Save", "保存"},
    {"Close", "关闭"},
    {"Choose", "选择"},
    {"Undo", "撤销"},
    {"Redo", "重做"},
    {"Cut", "剪切"},
    {"Copy", "复制"},
    {"Paste", "粘贴"},
    {"Delete", "删除"},
    {"Select All", "全选"},
    {"Look in:", "位置："},
    {"File name:", "文件名："},
    {"Files of type:", "文件类型："},
    {"Name", "名称"},
    {"Size", "大小"},
    {"Type", "类型"},
    {"Kind", "类型"},
    {"Date Modified", "修改日期"},
    {"Computer", "计算机"},
    {"Directory:", "文件夹："},
    {"Folder", "文件夹"},
    {"File", "文件"},
    {"Drive", "磁盘"},
    {"Back", "后退"},
    {"Forward", "前进"},
    {"Parent Directory", "上一级"},
    {"Create New Folder", "新建文件夹"},
    {"New Folder", "新建文件夹"},
    {"List View", "列表"},
    {"Detail View", "详细信息"},
    {"Rename", "重命名"},
    {"Show hidden files", "显示隐藏文件"},
    {"Sidebar", "边栏"},
    {"Files", "文件"},
    {"All files (*)", "所有文件 (*)"},
    {"%1 already exists.\nDo you want to replace it?", "%1 已经存在。\n是否替换？"},
    {"%1\nFile not found.\nPlease verify the correct file name was given.", "%1\n找不到文件，请核对文件名。"},
    {"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
     "%1\n找不到文件夹，请核对文件夹名。"},
};

} // namespace

QString ChineseTexts::translate(const char*, const char* source, const char*, int) const
{
    std::string plain(source);
    std::erase(plain, '&');
    const auto* const found = std::ranges::find(words, std::string_view(plain), &Word::source);
    return found == std::end(words) ? QString() : QString::fromUtf8(found->chinese);
}

} // namespace tarvik
