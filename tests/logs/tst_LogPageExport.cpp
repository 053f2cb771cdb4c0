#include "logs/LogPageTest.h"
#include "logs/ui/ExportDialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <utility>
#include <vector>

/// The log page's export: what the operator is asked, and which file is there then.
class tst_LogPageExport final : public LogPageTest {
    Q_OBJECT
private slots:
    void cleanup() {
        answering_.stop();
        LogPageTest::cleanup();
    }
    void exports_data();
    void exports();
    void exportCanBeCalledOff_data();
    void exportCanBeCalledOff();
    void existingFileIsAskedFor();

private:
    /// Deals with the modal windows to come, one function each; `answers_` is empty when all were there.
    void answer(std::vector<std::function<void(QWidget*)>> answers);
    static void saveAs(QWidget* chooser, const QString& name);

    std::vector<std::function<void(QWidget*)>> answers_;
    QTimer answering_;
};

void tst_LogPageExport::answer(std::vector<std::function<void(QWidget*)>> answers) {
    answers_ = std::move(answers);
    answering_.disconnect();
    connect(&answering_, &QTimer::timeout, this, [this, last = QPointer<QWidget>()]() mutable {
        QWidget* const modal = QApplication::activeModalWidget();
        if (modal == nullptr || modal == last || answers_.empty() ||
            modal->objectName() == QLatin1String("ExportProgress"))
            return;
        last = modal;
        const auto next = answers_.front();
        answers_.erase(answers_.begin());
        next(modal);
    });
    answering_.start(5);
}

void tst_LogPageExport::saveAs(QWidget* chooser, const QString& name) {
    auto* const files = chooser->findChild<QFileDialog*>();
    files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
    static_cast<QDialog*>(files)->accept();
}

void tst_LogPageExport::exports_data() {
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file"); ///< that is there afterwards; empty: none
    QTest::newRow("text") << "txt"
                          << "a.txt"
                          << "a.txt";
    QTest::newRow("upper case") << "txt"
                                << "A.TXT"
                                << "A.TXT";
    QTest::newRow("no suffix") << "txt"
                               << "a"
                               << "a.txt";
    QTest::newRow("other suffix") << "txt"
                                  << "a.xls"
                                  << "a.xls.txt";
    QTest::newRow("workbook") << "xls"
                              << "b.c"
                              << "b.c.xls";
    QTest::newRow("nowhere") << "txt"
                             << "missing/a.txt"
                             << "";
}

void tst_LogPageExport::exports() {
    QFETCH(QString, format);
    QFETCH(QString, name);
    QFETCH(QString, file);
    add(SqlHelp::FireLog, 120);
    show();
    QString tip;
    answer({[format](QWidget* dialog) {
                QVERIFY(qobject_cast<ExportDialog*>(dialog) != nullptr);
                dialog->findChild<QAbstractButton*>(format + "Format")->click();
                dialog->findChild<QAbstractButton*>("exportOk")->click();
            },
            [this, name](QWidget* chooser) {
                QCOMPARE(chooser->windowTitle(), QStringLiteral("Open File"));
                QCOMPARE(chooser->findChild<QFileDialog*>()->directory().canonicalPath(),
                         QDir(dir_->path()).canonicalPath());
                if (name.contains('/')) { // the folder goes while the dialog is open
                    QVERIFY(QDir(dir_->path()).mkdir("missing"));
                    saveAs(chooser, dir_->filePath(name));
                    QVERIFY(QDir(dir_->path()).rmdir("missing"));
                    return;
                }
                saveAs(chooser, dir_->filePath(name));
            },
            [&tip](QWidget* dialog) {
                tip = dialog->windowTitle() + '|' + dialog->findChild<QLabel*>("tipText")->text();
                static_cast<QDialog*>(dialog)->accept();
            }});
    click("exportButton");
    QVERIFY(answers_.empty());
    QCOMPARE(tip, file.isEmpty() ? QStringLiteral("提示|导出失败!") : QStringLiteral("提示|导出成功!"));
    if (file.isEmpty())
        return;
    QFile result(dir_->filePath(file));
    QVERIFY(result.open(QIODevice::ReadOnly));
    const QByteArray content = result.readAll();
    if (format == "txt") // all rows, not those of the page
        QCOMPARE(content.count('\n'), 121);
    else
        QVERIFY(content.startsWith("\xD0\xCF\x11\xE0"));
}

void tst_LogPageExport::exportCanBeCalledOff_data() {
    QTest::addColumn<bool>("atFormat");
    QTest::newRow("at the format") << true;
    QTest::newRow("at the file") << false;
}

void tst_LogPageExport::exportCanBeCalledOff() {
    QFETCH(bool, atFormat);
    add(SqlHelp::FireLog, 1);
    show();
    const auto reject = [](QWidget* dialog) {
        static_cast<QDialog*>(dialog)->reject();
    };
    const auto accept = [](QWidget* dialog) {
        static_cast<QDialog*>(dialog)->accept();
    };
    if (atFormat)
        answer({reject});
    else
        answer({accept, reject});
    click("exportButton");
    QVERIFY(answers_.empty());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QCOMPARE(QDir(dir_->path()).entryList({"*.txt*", "*.xls*"}), QStringList());
}

void tst_LogPageExport::existingFileIsAskedFor() {
    add(SqlHelp::FireLog, 1);
    show();
    QFile old(dir_->filePath("a.txt"));
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    for (const bool replace : {false, true}) {
        std::vector<std::function<void(QWidget*)>> answers{
            [](QWidget* dialog) { static_cast<QDialog*>(dialog)->accept(); },
            [this](QWidget* chooser) { saveAs(chooser, dir_->filePath("a")); },
            [replace](QWidget* question) {
                QVERIFY(question->findChild<QLabel*>("tipText")->text().contains("a.txt"));
                question->findChild<QAbstractButton*>(replace ? "tipOk" : "tipCancel")->click();
            }};
        if (replace)
            answers.emplace_back([](QWidget* tip) { static_cast<QDialog*>(tip)->accept(); });
        answer(std::move(answers));
        click("exportButton");
        QVERIFY(answers_.empty());
        QVERIFY(old.open(QIODevice::ReadOnly));
        QCOMPARE(old.readAll() == "old", !replace);
        old.close();
    }
}

QTEST_MAIN(tst_LogPageExport)
#include "tst_LogPageExport.moc"
