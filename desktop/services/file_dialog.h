#pragma once

#include "desktop/look/qt_text.h"
#include "desktop/services/system.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QScreen>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTreeView>

namespace tarvik {

/// "name|*.ext|name|*.ext" as the toolkit has its filters. "*.*" stands for every file, with a point or without.
inline QStringList name_filters(TextView filter)
{
    const QStringList parts = to_qt(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        patterns.replace(';', ' ').replace("*.*", "*");
        // The workbooks of today, too: the first filter of a row would show none of them.
        if (patterns == "*.xls") patterns += " *.xlsx";
        filters += parts[i] + " (" + patterns + ")";
    }
    return filters;
}

/// All patterns of the filters, as "*.txt".
inline QStringList name_patterns(TextView filter)
{
    QStringList patterns;
    for (const QString& each : name_filters(filter))
        patterns += each.mid(each.lastIndexOf('(') + 1).chopped(1).split(' ');
    return patterns;
}

/// Whether a file is of the program's own: a scratch file, or one of a dictionary.
inline bool is_own_file(const QString& name)
{
    static const QRegularExpression own("^(between[a-z0-9]*|牛津字典.*|现代汉语词典)\\.txt$",
                                        QRegularExpression::CaseInsensitiveOption);
    return own.match(name).hasMatch();
}

/// The files that were chosen last, over the program's end too. They are kept with the user's other settings, and where
/// these cannot be written for as long as the program runs.
class RecentFiles {
public:
    explicit RecentFiles(const QString& first_folder)
        : first_folder_(first_folder), paths_(user_settings().value(key).toStringList())
    {
    }

    void add(const QString& path)
    {
        paths_.removeAll(path);
        paths_.prepend(path);
        paths_ = paths_.mid(0, most);
        user_settings().setValue(key, paths_);
    }
    /// Those that are still there and have such a name, as "*.txt", the last first.
    QStringList files(const QStringList& patterns) const
    {
        QStringList there;
        for (const QString& path : paths_)
            if (const QFileInfo file(path); file.isFile() && QDir::match(patterns, file.fileName())) there += path;
        return there;
    }
    /// Of the last file of such a name, else of the last file, else the first folder.
    QString folder(const QStringList& patterns) const
    {
        for (const QStringList& wanted : {patterns, QStringList("*")})
            for (const QString& path : paths_) {
                const QFileInfo file(path), folder(file.absolutePath());
                if (folder.isDir() && QDir::match(wanted, file.fileName())) return folder.absoluteFilePath();
            }
        return first_folder_;
    }

private:
    static constexpr qsizetype most = 12;
    static constexpr const char* key = "files/recent";
    QString first_folder_;
    QStringList paths_;
};

/// Folders come ahead of files, whatever the order.
class ForeignFiles final : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override
    {
        const auto* files = dynamic_cast<const QFileSystemModel*>(sourceModel());
        if (files && files->isDir(left) != files->isDir(right))
            return files->isDir(left) == (sortOrder() == Qt::AscendingOrder);
        if (files && left.column() == 1) return files->size(left) < files->size(right);
        if (files && left.column() == 3) return files->lastModified(left) < files->lastModified(right);
        return QSortFilterProxyModel::lessThan(left, right);
    }
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override
    {
        return !is_own_file(sourceModel()->index(row, 0, parent).data().toString());
    }
};

/// Asks for a file. `places` stand at the side. Recent files are offered; what only the program itself reads is not;
/// ".txt" need not be typed.
class FileDialog final : public QFileDialog {
public:
    FileDialog(QWidget* parent, bool save, TextView filter, const QString& folder, const QStringList& recent,
               const QList<QUrl>& places)
        : QFileDialog(parent, save ? "保存" : "打开", folder)
    {
        setOption(DontUseNativeDialog);
        setOption(DontConfirmOverwrite); // the program asks before it replaces a file
        setNameFilters(name_filters(filter));
        setAcceptMode(save ? AcceptSave : AcceptOpen);
        setFileMode(AnyFile); // accept() looks for the file itself
        if (save && !filter.contains(U"*.*")) setDefaultSuffix("txt");
        setProxyModel(new ForeignFiles(this));
        if (!save) offer_recent(recent);
        setSidebarUrls(places);
        const QFontMetrics metrics(font());
        lay_list(metrics.averageCharWidth());
        resize(QSize(metrics.averageCharWidth() * 110, metrics.height() * 28)
                   .boundedTo(screen()->availableSize() * share_of_screen));
    }

protected:
    // A name without its ".txt" is that of the file with it, unless there is such a file.
    void accept() override
    {
        auto* name = findChild<QLineEdit*>("fileNameEdit");
        if (name && acceptMode() == AcceptOpen && !name->text().isEmpty()) {
            const QFileInfo typed(directory(), name->text());
            const bool with_ending = !typed.exists() && QFileInfo::exists(typed.absoluteFilePath() + ".txt");
            if (with_ending) name->setText(name->text() + ".txt");
            if (!typed.exists() && !with_ending) {
                QMessageBox::warning(this, windowTitle(), name->text() + "\n找不到文件，请核对文件名。");
                return;
            }
        }
        QFileDialog::accept();
    }

private:
    static constexpr double share_of_screen = 0.85;

    // Names and dates can be read as a whole; the kind of a file is in its name.
    void lay_list(int character)
    {
        constexpr int name = 0, size = 1, kind = 2, changed = 3, places_characters = 22;
        if (auto* list = findChild<QTreeView*>("treeView")) {
            list->header()->setStretchLastSection(false);
            list->header()->setSectionHidden(kind, true);
            list->header()->setSectionResizeMode(name, QHeaderView::Stretch);
            for (const int column : {size, changed})
                list->header()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
        }
        const int icon = fontMetrics().height();
        for (auto* view : findChildren<QAbstractItemView*>()) view->setIconSize({icon, icon});
        if (auto* parts = findChild<QSplitter*>("splitter"))
            parts->setSizes({places_characters * character, 5 * places_characters * character});
    }
    void offer_recent(const QStringList& recent)
    {
        auto* grid = dynamic_cast<QGridLayout*>(layout());
        if (!grid || recent.isEmpty()) return;
        auto* list = new QComboBox(this);
        list->setObjectName("recent");
        list->addItem("选择……");
        for (const QString& path : recent) list->addItem(QDir::toNativeSeparators(path));
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        const int row = grid->rowCount();
        auto* label = new QLabel("最近打开(&R)：", this);
        label->setBuddy(list);
        grid->addWidget(label, row, 0);
        grid->addWidget(list, row, 1, 1, grid->columnCount() - 1);
        connect(list, &QComboBox::activated, this, [this, list](int index) {
            if (index == 0) return;
            setDirectory(QFileInfo(list->itemText(index)).absolutePath());
            selectFile(list->itemText(index));
            accept();
        });
    }
};

} // namespace tarvik
