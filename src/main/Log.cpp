#include "main/Log.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDateTime>

#include "main/Paths.h"

namespace glimmo {

QString logTimestamp() {
    return QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss'Z'"));
}

void log(const QString& message) {
    const QByteArray line =
        (logTimestamp() + QLatin1Char(' ') + message + QLatin1Char('\n')).toUtf8();
    const QByteArray path = logFile().toLocal8Bit();
    // O_APPEND makes each write land at the end as one piece, whoever else is writing.
    const int fd = ::open(path.constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) return;
    qsizetype done = 0;
    while (done < line.size()) {
        const ssize_t n = ::write(fd, line.constData() + done, size_t(line.size() - done));
        if (n <= 0) break;
        done += n;
    }
    ::close(fd);
}

}  // namespace glimmo
