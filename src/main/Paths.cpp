#include "main/Paths.h"

#include <QDir>
#include <QtGlobal>

namespace glimmo {
namespace {

// An XDG variable counts only when it holds an absolute path.
QString xdgDir(const char* variable, const char* fallbackUnderHome) {
    const QString value = qEnvironmentVariable(variable);
    if (!value.isEmpty() && QDir::isAbsolutePath(value)) return QDir::cleanPath(value);
    return homeDir() + QLatin1Char('/') + QLatin1String(fallbackUnderHome);
}

}  // namespace

QString homeDir() {
    QString home = qEnvironmentVariable("HOME");
    if (home.isEmpty()) home = QDir::homePath();
    while (home.size() > 1 && home.endsWith(QLatin1Char('/'))) home.chop(1);
    return home;
}

QString dataHome() {
    return xdgDir("XDG_DATA_HOME", ".local/share");
}

QString supportDir() {
    return dataHome() + QStringLiteral("/Glimmo");
}

QString logFile() {
    return supportDir() + QStringLiteral("/log.txt");
}

QString configDir() {
    return xdgDir("XDG_CONFIG_HOME", ".config") + QStringLiteral("/Glimmo");
}

}  // namespace glimmo
