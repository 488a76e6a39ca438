#pragma once
// Points HOME and the XDG folders at a fresh temporary folder for the life of the object, so a
// test never touches the real user's files. Restores the previous values afterwards.

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <map>
#include <optional>

namespace testsupport {

class TempHome {
public:
    TempHome();
    ~TempHome();
    TempHome(const TempHome&) = delete;
    TempHome& operator=(const TempHome&) = delete;

    QString path() const { return dir_.path(); }
    // Writes a file under the home folder (folders created), returns its absolute path.
    QString write(const QString& relative, const QByteArray& content) const;
    QByteArray read(const QString& relative) const;

private:
    QTemporaryDir dir_;
    std::map<QByteArray, std::optional<QByteArray>> saved_;
};

// Spins the event loop until pred() holds or timeoutMs passes; returns pred().
bool waitUntil(const std::function<bool()>& pred, int timeoutMs = 5000);

}  // namespace testsupport
