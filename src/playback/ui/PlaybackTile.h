#pragma once

#include "playback/PlaybackSession.h"

#include <QWidget>

#include <memory>

class GLYuvWidget;

namespace corvanta::playback {

/// One camera of a playback: a strip with its name and the time of its picture, below that the picture, which the
/// wall draws, or a text that says why there is none. GUI thread.
class PlaybackTile final : public QWidget {
    Q_OBJECT
public:
    PlaybackTile(int number, const QString& name, QWidget* parent);
    ~PlaybackTile() override;

    void show(const PlaybackSession::View& view);
    /// Why nothing of this camera can be played; shown wherever it has no picture.
    void setReason(const QString& reason);
    void setSelected(bool selected);
    bool isSelected() const { return selected_; }

    /// Where the picture lies in the tile; empty while there is none.
    QRect picturePlace() const;
    /// Null while there was no picture yet.
    GLYuvWidget* renderer() const { return renderer_.get(); }
    const SharedPicture& picture() const { return view_.picture; }
    QString text() const;

signals:
    void sigPressed(int number);
    void sigDoubleClicked(int number);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void describe();

    int number_;
    QString name_;
    PlaybackSession::View view_;
    const char* text_ = QT_TR_NOOP("正在读取录像…"); ///< in place of the picture, to be translated; null: the reason
    QString reason_;                                 ///< empty while there is something to be played
    bool selected_ = false;
    std::unique_ptr<GLYuvWidget> renderer_; ///< no child: the wall draws it, and widgets need no OpenGL then
};

} // namespace corvanta::playback
