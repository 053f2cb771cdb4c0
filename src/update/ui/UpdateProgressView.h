#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;

namespace corvanta::update {

class UpdateDownload;

/// How far an update is, with a bar and a way out. Shown only while there is an update on its way.
class UpdateProgressView final : public QWidget {
    Q_OBJECT
public:
    enum class Shape {
        Strip, ///< two lines over the width of a window
        Block, ///< three lines in a dialog
    };

    /// `download` outlives it.
    UpdateProgressView(UpdateDownload& download, Shape shape, QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange(Shape shape, QWidget& cancel);
    void refresh();
    void elide();

    UpdateDownload& download_;
    QLabel* what_;
    QLabel* howFar_;
    QProgressBar* bar_;
    QString whatText_;
};

} // namespace corvanta::update
