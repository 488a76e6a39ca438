#include "shell/InstallActions.h"

#include <QApplication>
#include <QMessageBox>
#include <QProcess>

namespace shell {

InstallActions InstallActions::standard() {
    InstallActions actions;
    actions.quitOthers = [] {};
    actions.startDetached = [](const QString& program, const QStringList& arguments) {
        return QProcess::startDetached(program, arguments);
    };
    actions.alert = [](const QString& message, const QString& informative) {
        QMessageBox box(QMessageBox::Warning, message, message, QMessageBox::Ok);
        box.setInformativeText(informative);
        box.activateWindow();
        box.raise();
        box.exec();
    };
    actions.quit = [] {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    };
    return actions;
}

void relaunch(const InstallActions& actions, const QString& bundle) {
    const QString command = QStringLiteral("sleep 1; exec \"%1/bin/glimmo\" -setup").arg(bundle);
    actions.startDetached(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command});
}

}  // namespace shell
