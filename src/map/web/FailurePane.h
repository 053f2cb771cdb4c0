#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace corvanta::map {

/// Stands in the place of a page that is not there: why, and a way back.
class FailurePane final : public QWidget {
    Q_OBJECT
public:
    explicit FailurePane(QWidget* parent);

    void setReason(const QString& reason);

protected:
    void changeEvent(QEvent* event) override;

signals:
    void sigReload();

private:
    void setWords();

    QLabel* reason_;
    QPushButton* reload_;
};

} // namespace corvanta::map
