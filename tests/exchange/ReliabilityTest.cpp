// Many requests in a row, and a flood of output: no leaks, no crash, bounded memory.
#include <QDir>
#include <QFile>

#include "ExchangeFixture.h"

using namespace exchangetest;
using testsupport::waitUntil;

namespace {

int openFds() {
    return int(QDir("/proc/self/fd").entryList(QDir::NoDotAndDotDot | QDir::System).size());
}

// Our child processes, zombies included.
QStringList children() {
    QStringList pids;
    for (const QString& task :
         QDir("/proc/self/task").entryList(QDir::NoDotAndDotDot | QDir::Dirs)) {
        QFile file("/proc/self/task/" + task + "/children");
        if (file.open(QIODevice::ReadOnly))
            pids += QString::fromLatin1(file.readAll()).split(' ', Qt::SkipEmptyParts);
    }
    return pids;
}

// A size from /proc/self/status in kB: "VmRSS:" now, "VmHWM:" the peak since resetPeak().
qint64 statusKb(const char* field) {
    QFile file("/proc/self/status");
    if (!file.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith(field))
            return line.mid(qstrlen(field)).trimmed().split(' ')[0].toLongLong();
    return -1;
}

void resetPeak() {
    QFile file("/proc/self/clear_refs");
    if (file.open(QIODevice::WriteOnly)) file.write("5");
}

}  // namespace

TEST_F(ExchangeTest, ThousandRequestsLeaveNoFdsNoChildrenAndFlatMemory) {
    const int fdsBefore = openFds();
    qint64 rssAfterWarmUp = 0;
    int answered = 0;
    for (int i = 0; i < 1000; ++i) {
        if (i == 50) rssAfterWarmUp = statusKb("VmRSS:");
        exchange->warmUp();  // as the engine's tick does between requests
        const auto outcome = ask(QStringLiteral("<text>\nrequest %1\n</text>").arg(i));
        answered += int(outcome->done == QStringList{QStringLiteral("Request %1.").arg(i)});
    }
    EXPECT_EQ(answered, 1000);
    EXPECT_EQ(runs().size(), 1000);
    EXPECT_TRUE(waitUntil([] { return children().isEmpty(); }))
        << children().join(' ').toStdString();
    EXPECT_TRUE(waitUntil([&] { return openFds() == fdsBefore; }))
        << openFds() << " vs " << fdsBefore;
    EXPECT_LT(statusKb("VmRSS:") - rssAfterWarmUp, 4 * 1024);
    EXPECT_EQ(logLines().size(), 1000);
}

TEST_F(ExchangeTest, FiftyMegabytesWithoutALineFeedStayBounded) {
    resetPeak();
    const qint64 start = statusKb("VmRSS:");
    script("flood 52428800\nexit 0\n");
    auto outcome = ask("<text>\nhello\n</text>", 30000);
    EXPECT_TRUE(outcome->done.isEmpty());
    EXPECT_EQ(logLines(), QStringList{"claude failed after 0.0s"});
    // The line buffer is capped at a few megabytes; keeping the line would cost 50.
    EXPECT_LT(statusKb("VmHWM:") - start, 24 * 1024);

    // After the monster line ends, the stream is read normally again.
    resetPeak();
    script("flood 52428800\nline \nresult Still here.\n");
    outcome = ask("<text>\nhello\n</text>", 30000);
    EXPECT_EQ(outcome->done, QStringList{"Still here."});
    EXPECT_LT(statusKb("VmHWM:") - start, 24 * 1024);
}
