#pragma once

#include <QTimer>
#include <QWidget>

#include <cstdint>
#include <optional>

class QHBoxLayout;
class RecordingStorage;

/// How full one drive is.
class DriveBar final : public QWidget {
    Q_OBJECT
public:
    struct Space {
        std::uint64_t free = 0;
        std::uint64_t total = 0; ///< bytes; more than none
    };

    explicit DriveBar(const QString& drive, QWidget* parent = nullptr);

    const QString& drive() const { return drive_; }
    /// Nothing: the drive is not there. `threshold`: free bytes up to which it takes no new files.
    void setSpace(const std::optional<Space>& space, std::uint64_t threshold);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void sayState();
    QString text() const;

    const QString drive_;
    std::optional<Space> space_;
    std::uint64_t threshold_ = 0;
};

/// How full the drives are that may hold files: looked at every 10 s while it is seen.
class DriveBars final : public QWidget {
    Q_OBJECT
public:
    /// `storage` outlives the bars.
    explicit DriveBars(const RecordingStorage& storage, QWidget* parent = nullptr);

    static constexpr int Interval = 10000; ///< ms

public slots:
    void refresh();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    const RecordingStorage& storage_;
    QHBoxLayout* row_;
    QList<DriveBar*> bars_;
    QTimer timer_;
};
