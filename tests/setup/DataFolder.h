#pragma once
// A temporary home whose only desktop entries are the ones a test writes: the system's data
// folders are pointed at an empty folder for the life of the object.

#include <QByteArray>
#include <QDir>

#include "TempHome.h"

class DataFolder {
public:
    DataFolder() : saved_(qgetenv("XDG_DATA_DIRS")) {
        QDir().mkpath(home_.path() + "/system");
        qputenv("XDG_DATA_DIRS", (home_.path() + "/system").toLocal8Bit());
    }
    ~DataFolder() { qputenv("XDG_DATA_DIRS", saved_); }

    // An application entry in ~/.local/share/applications (extra lines appended as given).
    void entry(const QString& id, const QString& name, const QByteArray& extra = {}) const {
        home_.write(
            ".local/share/applications/" + id + ".desktop",
            "[Desktop Entry]\nType=Application\nName=" + name.toUtf8() + "\nExec=true\n" + extra);
    }
    QString write(const QString& relative, const QByteArray& content) const {
        return home_.write(relative, content);
    }

private:
    testsupport::TempHome home_;
    QByteArray saved_;
};
