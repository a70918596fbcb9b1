#pragma once

#include "platform/text/text.h"

#include <QFileDialog>

namespace tarvik {

/// Asks for a file. `places` stand at the side. Recent files are offered; what only the program itself reads is not;
/// ".txt" need not be typed.
class FileDialog final : public QFileDialog {
public:
    FileDialog(QWidget* parent, bool save, TextView filter, const QString& folder, const QStringList& recent,
               const QList<QUrl>& places);

    /// Whether a file is of the program's own: a scratch file, or one of a dictionary.
    static bool is_own(const QString& name);

protected:
    void accept() override;

private:
    void lay_list(int character);
    void offer_recent(const QStringList& recent);
};

/// "name|*.ext|name|*.ext" as the toolkit has its filters. "*.*" stands for every file, with a point or without.
QStringList name_filters(TextView filter);
/// All patterns of the filters, as "*.txt".
QStringList name_patterns(TextView filter);

} // namespace tarvik
