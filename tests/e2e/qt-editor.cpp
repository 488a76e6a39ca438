// A Qt Widgets window with one multi-line text box, for checking the backend against Qt's
// accessibility bridge (which counts text offsets in UTF-16 units, unlike GTK). A QTextEdit:
// QPlainTextEdit reports each character's height within its own paragraph, not the box.
//
//   glimmo-qt-editor TEXT    prints "ready" once the window is shown and the box focused
#include <QApplication>
#include <QTextEdit>
#include <QTimer>
#include <cstdio>

int main(int argc, char** argv) {
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    QApplication app(argc, argv);
    QTextEdit edit;
    edit.setAcceptRichText(false);
    edit.setWindowTitle(QStringLiteral("Glimmo Qt editor"));
    edit.setPlainText(argc > 1 ? QString::fromUtf8(argv[1]) : QString());
    edit.resize(500, 300);
    edit.show();
    edit.activateWindow();
    edit.setFocus();
    QTimer::singleShot(300, [] {
        std::printf("ready\n");
        std::fflush(stdout);
    });
    return app.exec();
}
