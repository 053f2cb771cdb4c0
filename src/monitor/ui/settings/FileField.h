#pragma once

#include <QWidget>

class QLineEdit;

/// The path of a file: written, chosen in a file dialog, or cleared.
class FileField final : public QWidget {
    Q_OBJECT
public:
    /// `label` names it for the user; `filter` as a file dialog takes it. The edit has the object name `objectName`
    /// with "Path" behind it, the buttons "Browse" and "Clear".
    FileField(const QString& label, const QString& objectName, QString filter, QWidget* parent);

    /// With '/' between its parts, without blanks around it.
    QString path() const;
    void setPath(const QString& path);

signals:
    void sigPathChanged();

private:
    void browse();

    QLineEdit* edit_;
    QString filter_;
};
