#pragma once

#include <QWidget>

namespace tarvik {

/// A frame around controls that belong together, with its caption inside at the top.
class FrameWidget final : public QWidget {
public:
    explicit FrameWidget(QWidget* parent);

    void set_caption(const QString& caption);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString caption_;
};

} // namespace tarvik
