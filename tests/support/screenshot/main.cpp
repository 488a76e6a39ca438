// glimmo-screenshot FILE: saves the whole screen of $DISPLAY as a PNG (the demo's pictures).
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    if (argc != 2) return 2;
    QScreen* screen = QGuiApplication::primaryScreen();
    return screen && screen->grabWindow(0).save(QString::fromLocal8Bit(argv[1]), "PNG") ? 0 : 1;
}
