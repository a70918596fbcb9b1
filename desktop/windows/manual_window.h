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
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace tarvik
