#include "shell/Bundle.h"

#include <limits>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "main/Paths.h"

namespace shell {
namespace {

const QString kEntry = QStringLiteral("share/applications/glimmo.desktop");
const QString kIcon = QStringLiteral("share/icons/hicolor/scalable/apps/glimmo.svg");

QString userName(const QString& home) {
    QString user = qEnvironmentVariable("USER");
    if (user.isEmpty()) user = qEnvironmentVariable("LOGNAME");
    if (user.isEmpty()) user = QFileInfo(home).fileName();
    return user;
}

std::optional<QString> copyTree(const QString& from, const QString& to) {
    const QFileInfo info(from);
    if (info.isSymLink()) {
        if (!QFile::link(info.symLinkTarget(), to)) return QStringLiteral("cannot link %1").arg(to);
        return std::nullopt;
    }
    if (!info.isDir()) {
        QFile file(from);
        if (!file.copy(to))
            return QStringLiteral("cannot copy %1: %2").arg(from, file.errorString());
        return std::nullopt;
    }
    if (!QDir().mkpath(to)) return QStringLiteral("cannot create %1").arg(to);
    const auto entries =
        QDir(from).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    for (const QString& name : entries)
        if (auto error = copyTree(from + u'/' + name, to + u'/' + name)) return error;
    return std::nullopt;
}

// Best effort: a missing launcher entry leaves the program working from ~/.local/bin.
void writeLauncher(const BundlePaths& paths) {
    const QString dest = paths.destination();
    const QString program = dest + QStringLiteral("/bin/glimmo");

    QFile entry(dest + u'/' + kEntry);
    if (entry.open(QIODevice::ReadOnly)) {
        QStringList lines = QString::fromUtf8(entry.readAll()).split(u'\n');
        // The launcher may not have ~/.local/bin on its PATH: name the program by its path.
        for (QString& line : lines)
            if (line.startsWith(QStringLiteral("Exec=")))
                line = QStringLiteral("Exec=\"%1\"").arg(program);
        const QString dir = paths.dataHome + QStringLiteral("/applications");
        QDir().mkpath(dir);
        QFile out(dir + QStringLiteral("/glimmo.desktop"));
        if (out.open(QIODevice::WriteOnly | QIODevice::Truncate))
            out.write(lines.join(u'\n').toUtf8());
    }

    const QString iconDir = paths.dataHome + QStringLiteral("/icons/hicolor/scalable/apps");
    QDir().mkpath(iconDir);
    QFile::remove(iconDir + QStringLiteral("/glimmo.svg"));
    QFile::copy(dest + u'/' + kIcon, iconDir + QStringLiteral("/glimmo.svg"));

    const QString binDir = paths.home + QStringLiteral("/.local/bin");
    QDir().mkpath(binDir);
    QFile::remove(binDir + QStringLiteral("/glimmo"));
    QFile::link(program, binDir + QStringLiteral("/glimmo"));
}

}  // namespace

BundlePaths BundlePaths::standard() {
    BundlePaths paths;
    paths.executable = QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
    paths.home = glimmo::homeDir();
    paths.dataHome = glimmo::dataHome();
    const QString user = userName(paths.home);
    paths.volumeMounts = {QStringLiteral("/media/%1/Glimmo").arg(user),
                          QStringLiteral("/run/media/%1/Glimmo").arg(user)};
    return paths;
}

QString BundlePaths::runningBundle() const {
    return QDir::cleanPath(QFileInfo(executable).absolutePath() + QStringLiteral("/.."));
}

QString BundlePaths::destination() const {
    return home + QStringLiteral("/.local/opt/Glimmo");
}

std::optional<QString> BundlePaths::mountedVolume() const {
    for (const QString& mount : volumeMounts)
        if (QFileInfo::exists(mount + QStringLiteral("/Glimmo"))) return mount;
    return std::nullopt;
}

std::optional<QString> BundlePaths::volumeBundle() const {
    if (const auto mount = mountedVolume()) return *mount + QStringLiteral("/Glimmo");
    return std::nullopt;
}

std::optional<long long> parseBuild(const QString& text) {
    qsizetype i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) negative = text[i++] == u'-';
    if (i == text.size()) return std::nullopt;
    // Accumulated as a negative number, so the most negative value fits too.
    constexpr long long lowest = std::numeric_limits<long long>::min();
    long long value = 0;
    for (; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c < u'0' || c > u'9') return std::nullopt;
        const int digit = c.unicode() - u'0';
        if (value < (lowest + digit) / 10) return std::nullopt;
        value = value * 10 - digit;
    }
    if (!negative) {
        if (value == lowest) return std::nullopt;
        value = -value;
    }
    return value;
}

long long bundleVersion(const QString& bundle) {
    QFile file(bundle + QStringLiteral("/share/glimmo/build"));
    if (!file.open(QIODevice::ReadOnly)) return 0;
    // The file is one line: the number and its line end.
    QString text = QString::fromUtf8(file.read(64));
    if (text.endsWith(u'\n')) text.chop(1);
    return parseBuild(text).value_or(0);
}

std::optional<QString> placeCopy(const QString& source, const BundlePaths& paths) {
    const QString dest = paths.destination();
    if (QFileInfo(dest).exists() || QFileInfo(dest).isSymLink()) {
        // The home Trash is made inside $XDG_DATA_HOME, which must exist for it.
        QDir().mkpath(paths.dataHome);
        QFile old(dest);
        if (!old.moveToTrash())
            return QStringLiteral("cannot move %1 to the Trash: %2").arg(dest, old.errorString());
    }
    if (!QDir().mkpath(QFileInfo(dest).absolutePath()))
        return QStringLiteral("cannot create %1").arg(QFileInfo(dest).absolutePath());
    if (auto error = copyTree(source, dest)) return error;

    QFile program(dest + QStringLiteral("/bin/glimmo"));
    program.setPermissions(program.permissions() | QFile::ExeOwner | QFile::ExeUser |
                           QFile::ExeGroup | QFile::ExeOther);
    writeLauncher(paths);
    return std::nullopt;
}

}  // namespace shell
