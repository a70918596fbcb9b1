#pragma once

#include <QTextBrowser>

namespace tarvik {

/// The manual, which is part of the program.
class ManualWindow final : public QTextBrowser {
public:
    ManualWindow();

    /// Shows the manual at the first heading that holds this, or where it was.
    void open_at(const QString& heading);

protected:
    /// A picture is no wider than the window.
    QVariant loadResource(int type, const QUrl& name) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace tarvik
