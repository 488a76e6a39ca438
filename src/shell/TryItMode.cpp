#include "shell/TryItMode.h"

#include <QApplication>
#include <QTimer>

#include "platform/linux/session/Desktop.h"
#include "setup/TryIt.h"

namespace shell {

int runTryIt() {
    linuxdesk::Desktop desktop;
    platform::MemoryDefaults unused;
    platform::SystemClock clock;
    const platform::Platform desk = desktop.platform(unused, clock);
    bool done = false;
    bool late = false;
    setup::tryIt(desk.ax, desk.workspace, [&] {
        done = true;
        if (late) QApplication::exit(0);
    });
    QTimer::singleShot(2000, qApp, [&] {
        late = true;
        if (done) QApplication::exit(0);
    });
    return QApplication::exec();
}

}  // namespace shell
