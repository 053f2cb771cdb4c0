#include "monitor/ui/Fwidget.h"

#include "base/Settings.h"
#include "base/ui/Worded.h"
#include "monitor/Layouts.h"
#include "video/ui/GLYuvWidget.h"
#include "video/ui/ItemVideo.h"

#include <QDebug>
#include <QEvent>
#include <QGridLayout>
#include <QMenu>
#include <QPushButton>

namespace keys = corvanta::keys;

namespace {
constexpr int MenuMargin = 6;  // px
constexpr int SceneDelay = 10; // ms; many tiles change their texts at once
} // namespace

Fwidget::Fwidget(int rows, int columns, Settings& settings, QWidget* parent)
    : QWidget(parent)
    , settings_(settings)
    , grid_(rows, columns)
    , gridLayout_(new QGridLayout(this))
    , menuButton_(new QPushButton(this)) {
    setObjectName(QStringLiteral("Fwidget"));
    corvanta::wordedName(this, [] { return tr("视频窗口"); });
    setContentsMargins(0, 0, 0, 0);
    gridLayout_->setSizeConstraint(QLayout::SetNoConstraint);
    gridLayout_->setMargin(0);
    gridLayout_->setContentsMargins(0, 0, 0, 0);
    gridLayout_->setSpacing(0);
    makeTiles();
    makeMenu();
    addCover(*menuButton_);
    connect(&beat_, &PictureBeat::sigPicturesTaken, this, [this] {
        makeSurface();
        if (surface_ != nullptr)
            surface_->present();
    });
    sceneChanged_.setSingleShot(true);
    sceneChanged_.setInterval(SceneDelay);
    connect(&sceneChanged_, &QTimer::timeout, this, [this] {
        if (surface_ != nullptr)
            surface_->present();
    });
    connect(this, &Fwidget::sigLayoutChanged, &sceneChanged_, qOverload<>(&QTimer::start));
}

Fwidget::~Fwidget() {
    // Before the renderers that are drawn there.
    delete surfaceContainer_;
    // Before the beat that they are members of.
    qDeleteAll(tiles_);
}

void Fwidget::makeTiles() {
    tiles_.reserve(static_cast<std::size_t>(grid_.poolSize()));
    for (int row = 0; row < grid_.maximumRows(); ++row) {
        for (int column = 0; column < grid_.maximumColumns(); ++column) {
            auto* const tile = new ItemVideo(row * grid_.maximumColumns() + column, this, &beat_);
            tile->setDrawnByWall(true);
            connect(tile, &ItemVideo::sigDoubleClick, this, &Fwidget::onDoubleClickEvent);
            connect(tile, &ItemVideo::sig_setfocus, this, &Fwidget::on_setfocus);
            connect(tile, &ItemVideo::sig_updateDisplay, &sceneChanged_, qOverload<>(&QTimer::start));
            tiles_.push_back(tile);
            gridLayout_->addWidget(tile, row, column);
        }
    }
    tiles_.front()->setSelected(true);
}

void Fwidget::makeMenu() {
    menuButton_->setObjectName(QStringLiteral("layoutMenuButton"));
    corvanta::wordedName(menuButton_, [] { return tr("画面布局"); });
    corvanta::wordedTip(menuButton_, [] { return tr("画面布局"); });
    menuButton_->setFixedSize(20, 20);
    menuButton_->setStyleSheet(
        QStringLiteral("border-image: url(:/style/img/menu.png);background-color: rgba(0, 0, 0, 0)"));
    menuButton_->raise();
    connect(menuButton_, &QPushButton::clicked, this, &Fwidget::onMenu);

    layoutMenu_ = std::make_unique<QMenu>();
    layoutMenu_->setObjectName(QStringLiteral("layoutMenu"));
    corvanta::wordedName(layoutMenu_.get(), [] { return tr("画面布局"); });
    layoutMenu_->setStyleSheet(QStringLiteral("QMenu{background-color:rgb(235, 235, 235);} "
                                              "QMenu::item:selected {  background-color:rgb(0, 153, 255); }"));
    for (const corvanta::Layout& layout : corvanta::layouts()) {
        QAction* const action = layoutMenu_->addAction(QString());
        action->setData(layout.tiles);
        corvanta::wordedText(action, [text = layout.menuText] { return tr(text); });
    }
    connect(layoutMenu_.get(), &QMenu::triggered, this, &Fwidget::onPopMenuTriggered);
}

/// With the first picture: a wall without any needs no OpenGL.
void Fwidget::makeSurface() {
    if (surface_ != nullptr || !GLYuvWidget::isSupported())
        return;
    surface_ = new WallSurface([this] { return scene(); });
    surfaceContainer_ = surface_->embed(*this);
}

WallSurface::Scene Fwidget::scene() const {
    WallSurface::Scene scene;
    for (const ItemVideo* tile : tiles_) {
        const QRect place = tile->isVisible() ? tile->picturePlace() : QRect();
        if (place.isEmpty())
            continue;
        scene.pictures.push_back({place.translated(tile->pos()), tile->renderer()});
        scene.covers += tile->overPicture().translated(tile->pos());
    }
    for (const QWidget* cover : covers_) {
        if (cover != nullptr && cover->isVisible())
            scene.covers += QRect(mapFromGlobal(cover->mapToGlobal(QPoint())), cover->size());
    }
    return scene;
}

void Fwidget::addCover(QWidget& cover) {
    covers_ += QPointer<QWidget>(&cover);
    cover.installEventFilter(this);
}

bool Fwidget::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::Show || type == QEvent::Hide || type == QEvent::Move || type == QEvent::Resize)
        sceneChanged_.start();
    return QWidget::eventFilter(watched, event);
}

void Fwidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (surfaceContainer_ != nullptr)
        surfaceContainer_->setGeometry(rect());
    sceneChanged_.start();
    // Cameras write their names and the time into the upper corners.
    menuButton_->move(MenuMargin, height() - menuButton_->height() - MenuMargin);
}

ItemVideo* Fwidget::tile(int index) const {
    return index >= 0 && index < grid_.poolSize() ? tiles_[static_cast<std::size_t>(index)] : nullptr;
}

void Fwidget::setLayout(int rows, int columns, bool save) {
    if (grid_.setLayout(rows, columns)) {
        placeTiles();
        if (save) {
            settings_.set(keys::GridRows, rows);
            settings_.set(keys::GridColumns, columns);
            settings_.save();
        }
    }
    gridLayout_->update();
    emit sigLayoutChanged();
}

void Fwidget::placeTiles() {
    for (ItemVideo* tile : tiles_)
        tile->hide();
    int index = 0;
    for (int row = 0; row < grid_.rows(); ++row) {
        for (int column = 0; column < grid_.columns(); ++column, ++index) {
            ItemVideo* const shown = tile(index);
            if (shown == nullptr)
                continue;
            gridLayout_->addWidget(shown, row, column);
            shown->show();
        }
    }
    gridLayout_->setSpacing(0);
    menuButton_->raise();
}

void Fwidget::setZoom(int index) {
    grid_.setZoom(index);
    for (ItemVideo* shown : tiles_)
        shown->setVisible(shown->tileIndex() == index);
    menuButton_->raise();
    emit sigLayoutChanged();
}

void Fwidget::saveZoom() {
    settings_.set(keys::VideoZoom, grid_.zoomIndex());
    settings_.save();
}

int Fwidget::tileRequest(int index) const {
    const ItemVideo* const asked = tile(index);
    return asked == nullptr ? -1 : asked->requestId();
}

void Fwidget::showFrame(int index, const uchar* picture, uint width, uint height) const {
    if (ItemVideo* const receiver = tile(index))
        receiver->showFrame(picture, width, height);
}

void Fwidget::setTileText(int index, const QString& text) {
    if (ItemVideo* const changed = tile(index))
        changed->setText(text);
}

void Fwidget::clearAllTexts() {
    for (ItemVideo* changed : tiles_)
        changed->setText(QString());
}

void Fwidget::closeTile(int index) {
    if (ItemVideo* const closed = tile(index))
        closed->close();
}

void Fwidget::onMenu() {
    qDebug() << "Fwidget onMenu ---------";
    layoutMenu_->popup(menuButton_->mapToGlobal(QPoint(0, menuButton_->height())));
}

void Fwidget::onPopMenuTriggered(QAction* action) {
    for (const corvanta::Layout& layout : corvanta::layouts()) {
        if (action->data().toInt() == layout.tiles) {
            setLayout(layout.rows, layout.columns, true);
            return;
        }
    }
}

void Fwidget::onDoubleClickEvent() {
    const auto* const sent = qobject_cast<ItemVideo*>(sender());
    if (sent == nullptr)
        return;
    toggleZoom(sent->tileIndex());
}

void Fwidget::toggleZoom(int index) {
    if (grid_.zoomIndex() < 0)
        setZoom(index);
    else
        setLayout(grid_.rows(), grid_.columns(), false);
    saveZoom();
}

void Fwidget::on_setfocus(int index) {
    if (tile(index) == nullptr)
        return;
    selected_ = index;
    for (ItemVideo* changed : tiles_)
        changed->setSelected(changed->tileIndex() == index);
    emit sigSelected(index);
}
