#pragma once

#include "manageWidget/SdFiles.h"
#include "manageWidget/ui/ConfigPage.h"

class FlowRequest;
class QComboBox;
class QLineEdit;
class QProgressBar;
class QTreeWidget;

/// The card of a device: its room, its files, downloads, deleting, formatting.
class SdCardConfigPage final : public ConfigPage {
    Q_OBJECT
public:
    SdCardConfigPage(const ConfigTarget& target, QWidget* parent);

    void discard() override;

protected:
    void read() override;

private:
    void buildFiles();
    void buildDownload();
    void list();
    void showFiles(const QVariant& sdlist);
    void openFolder(const QString& folder);
    QVector<corvanta::manage::SdFile> chosen() const;
    void download();
    void nextDownload();
    void endDownload(const QString& text);
    void remove();
    void format();
    void showButtons();

    QLabel* room_;
    QProgressBar* used_;
    QComboBox* kind_ = nullptr;
    QLineEdit* date_ = nullptr;
    QLabel* folderText_ = nullptr;
    QTreeWidget* files_ = nullptr;
    QPushButton* list_ = nullptr;
    QPushButton* up_ = nullptr;
    QPushButton* download_ = nullptr;
    QPushButton* delete_ = nullptr;
    QPushButton* format_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QLabel* progress_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QString folder_;
    QVector<corvanta::manage::SdFile> shown_;   ///< by the row's number, which each row carries
    QVector<corvanta::manage::SdFile> waiting_; ///< to be downloaded
    QString into_;                              ///< the folder for them
    FlowRequest* loading_;
};
