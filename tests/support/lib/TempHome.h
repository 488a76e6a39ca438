#pragma once
// TempHome points HOME and the XDG folders at a fresh temporary folder for the life of the
// object, so a test never touches the real user's files. Restores the previous values afterwards.

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <map>
#include <optional>

namespace testsupport {

// A temporary folder alone, for a program started with its HOME there (startIn).
class TempFolder {
public:
    QString path() const { return dir_.path(); }
    // Writes a file under the folder (folders created), returns its absolute path.
    QString write(const QString& relative, const QByteArray& content) const;
    QByteArray read(const QString& relative) const;

private:
    QTemporaryDir dir_;
};

// Sets (to a value) or unsets (no value) environment variables for the life of the object, and
// puts the old values back afterwards.
class ScopedEnv {
public:
    using Values = std::map<QByteArray, std::optional<QByteArray>>;
    explicit ScopedEnv(const Values& values);
    ~ScopedEnv();
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    Values saved_;
};

class TempHome : public TempFolder {
public:
    TempHome();

private:
    ScopedEnv env_;
};

// Starts program with HOME at home and no XDG folders set, so it keeps its files there.
void startIn(QProcess& process, const QString& home, const QString& program,
             const QStringList& args = {});

// Spins the event loop until pred() holds or timeoutMs passes; returns pred().
bool waitUntil(const std::function<bool()>& pred, int timeoutMs = 5000);

}  // namespace testsupport
