#pragma once

#include <QGraphicsObject>
#include <QMovie>
#include <QPointer>

#include <map>
#include <memory>

namespace corvanta::map {

/// The animated pictures of the levels, each running once for all who show it, and only while somebody does.
class AlarmMovies final {
public:
    AlarmMovies() = default;
    AlarmMovies(const AlarmMovies&) = delete;
    AlarmMovies& operator=(const AlarmMovies&) = delete;

    /// The movie of a level; null for a level without a picture. One `release` for each `take`.
    QMovie* take(int level);
    void release(int level);

private:
    struct Entry {
        std::unique_ptr<QMovie> movie;
        int users = 0;
    };
    std::map<int, Entry> entries_;
};

/// The animated picture behind a marker, until the user clears the alarm. Takes no mouse.
class MapAlarmlabel final : public QGraphicsObject {
    Q_OBJECT
public:
    /// `movies` outlives it.
    MapAlarmlabel(AlarmMovies& movies, QGraphicsItem* parent);
    ~MapAlarmlabel() override;

    /// Another level replaces the one before; one without a picture shows none.
    void setLevel(int level);
    int level() const { return level_; }
    /// The picture that is shown; empty for none.
    QString picture() const { return movie_ == nullptr ? QString() : movie_->fileName(); }
    bool isRunning() const { return movie_ != nullptr && movie_->state() == QMovie::Running; }

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    void drop();

    AlarmMovies& movies_;
    QPointer<QMovie> movie_;
    int level_ = 0;
};

} // namespace corvanta::map
