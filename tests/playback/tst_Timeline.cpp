#include "playback/Timeline.h"

#include <QDateTime>
#include <QtTest>

using namespace corvanta::playback;
using std::chrono::milliseconds;
using std::chrono::seconds;

namespace {

/// "begin+length begin+length": seconds, "3.5+10".
std::vector<Timeline::Recording> recordings(const QString& text) {
    std::vector<Timeline::Recording> list;
    for (const QString& one : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const double begin = one.section(QLatin1Char('+'), 0, 0).toDouble();
        const double length = one.section(QLatin1Char('+'), 1).toDouble();
        list.push_back(
            {std::to_string(list.size()), milliseconds(qRound(begin * 1000)), milliseconds(qRound(length * 1000))});
    }
    return list;
}

/// Each piece as "begin-end:recording@offset".
QString pieces(const Timeline& timeline) {
    QStringList list;
    const auto text = [](std::chrono::microseconds time) {
        return QString::number(static_cast<double>(time.count()) / 1e6);
    };
    for (const Timeline::Piece& piece : timeline.pieces())
        list += QStringLiteral("%1-%2:%3@%4")
                    .arg(text(piece.span.begin), text(piece.span.end))
                    .arg(piece.recording)
                    .arg(text(piece.offset));
    return list.join(QLatin1Char(' '));
}

} // namespace

class tst_Timeline final : public QObject {
    Q_OBJECT
private slots:
    void namesTellTheirTime_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QDateTime>("time");
        const QDateTime time(QDate(2026, 3, 5), QTime(14, 7, 59));
        QTest::newRow("plain") << QStringLiteral("20260305140759.avi") << time;
        QTest::newRow("more behind") << QStringLiteral("20260305140759_2.mp4") << time;
        QTest::newRow("no such day") << QStringLiteral("20260230140759.avi") << QDateTime();
        QTest::newRow("too short") << QStringLiteral("202603051407.avi") << QDateTime();
        QTest::newRow("other text") << QStringLiteral("+2026030514075.avi") << QDateTime();
        QTest::newRow("empty") << QString() << QDateTime();
    }
    void namesTellTheirTime() {
        QFETCH(QString, name);
        QFETCH(QDateTime, time);
        const auto begin = beginFromName(name);
        QCOMPARE(begin.has_value(), time.isValid());
        if (begin) {
            QCOMPARE(toLocalTime(*begin), time);
            QCOMPARE(*begin, toMoment(time));
        }
    }

    void recordingsBecomePieces_data() {
        QTest::addColumn<QString>("recorded");
        QTest::addColumn<QString>("expected");
        QTest::newRow("nothing") << ""
                                 << "";
        QTest::newRow("sorted") << "100+10 0+50"
                                << "0-50:0@0 100-110:1@0";
        QTest::newRow("without length") << "0+0 5+5"
                                        << "5-10:0@0";
        QTest::newRow("a name's second before the end") << "0+60.4 60+60"
                                                        << "0-60.4:0@0 60.4-120.4:1@0";
        QTest::newRow("small overlaps add up") << "0+10.5 10+10.5 20+10"
                                               << "0-10.5:0@0 10.5-21:1@0 21-31:2@0";
        QTest::newRow("the later one is seen") << "0+60 30+60"
                                               << "0-30:0@0 30-90:1@0";
        QTest::newRow("within another") << "0+60 20+10"
                                        << "0-20:0@0 20-30:1@0 30-60:0@30";
        QTest::newRow("two within another") << "0+60 20+10 25+10"
                                            << "0-20:0@0 20-25:1@0 25-35:2@0 35-60:0@35";
        QTest::newRow("begun together") << "0+60 0+20"
                                        << "0-20:1@0 20-60:0@20";
    }
    void recordingsBecomePieces() {
        QFETCH(QString, recorded);
        QFETCH(QString, expected);
        QCOMPARE(pieces(Timeline(recordings(recorded))), expected);
    }

    void everyMomentIsFoundAgain() {
        const Timeline timeline(recordings(QStringLiteral("0+60 20+10 100+50 149+20 300+1")));
        QCOMPARE(timeline.whole(), (Span{seconds(0), seconds(301)}));
        for (Moment moment(0); moment < seconds(320); moment += milliseconds(137)) {
            const auto place = timeline.at(moment);
            const bool within = moment < seconds(60) || (moment >= seconds(100) && moment < seconds(170)) ||
                                (moment >= seconds(300) && moment < seconds(301));
            QCOMPARE(place.has_value(), within);
            if (place)
                QCOMPARE(timeline.momentOf(*place), moment);
        }
        QCOMPARE(timeline.at(seconds(-1)).has_value(), false);
        QCOMPARE(timeline.pieceAfter(seconds(60)), std::optional<std::size_t>(3));
        QCOMPARE(timeline.pieceBefore(seconds(60)), std::optional<std::size_t>(2));
        QCOMPARE(timeline.pieceAfter(seconds(300)), std::nullopt);
        QCOMPARE(timeline.pieceBefore(seconds(10)), std::nullopt);
    }

    void shortPausesAreNoGaps() {
        const Timeline timeline(recordings(QStringLiteral("0+60 61.5+10 80+5")));
        const std::vector<Span> expected{{seconds(0), milliseconds(71500)}, {seconds(80), seconds(85)}};
        QCOMPARE(timeline.covered(), expected);
        const std::vector<Span> united = unite({{seconds(5), seconds(9)},
                                                {seconds(0), seconds(6)},
                                                {seconds(9), seconds(10)},
                                                {seconds(12), seconds(13)}},
                                               seconds(0));
        const std::vector<Span> two{{seconds(0), seconds(10)}, {seconds(12), seconds(13)}};
        QCOMPARE(united, two);
    }
};

QTEST_GUILESS_MAIN(tst_Timeline)
#include "tst_Timeline.moc"
