#pragma once
// The text caret found in the screen's pixels alone: the thin upright bar that blinks, free of
// anything the application reports about itself.

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QRect>
#include <QScreen>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <optional>

#include "TempHome.h"

namespace desktop {

// The whole screen as it is now.
inline QImage screenshot() {
    QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->grabWindow(0).toImage().convertToFormat(QImage::Format_RGB32)
                  : QImage();
}

// The bounds of the pixels that differ between two shots, leaving out those inside ignored.
inline QRect changedPixels(const QImage& a, const QImage& b, const QRect& ignored) {
    QRect out;
    if (a.size() != b.size()) return out;
    for (int y = 0; y < a.height(); ++y) {
        const auto* ra = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* rb = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x) {
            if (ra[x] == rb[x] || ignored.contains(x, y)) continue;
            const int d = std::abs(qRed(ra[x]) - qRed(rb[x])) +
                          std::abs(qGreen(ra[x]) - qGreen(rb[x])) +
                          std::abs(qBlue(ra[x]) - qBlue(rb[x]));
            if (d > 48) out = out.united(QRect(x, y, 1, 1));
        }
    }
    return out;
}

// The caret's bar, from shots taken until one differs from the one before only by a bar a few
// pixels wide and a line high (the caret blinked); absent when none blinks within timeoutMs.
// Pixels inside ignored (a window over the application) do not count.
// shoot takes the shot (by default the X display's own).
inline std::optional<QRect> blinkingCaret(const QRect& ignored, int timeoutMs = 4000,
                                          const std::function<QImage()>& shoot = screenshot) {
    QImage previous = shoot();
    for (int waited = 0; waited < timeoutMs; waited += 50) {
        testsupport::waitUntil([] { return false; }, 50);
        QImage shot = shoot();
        const QRect bar = changedPixels(previous, shot, ignored);
        if (!bar.isNull() && bar.width() <= 4 && bar.height() >= 8 && bar.height() <= 60)
            return bar;
        previous = std::move(shot);
    }
    return std::nullopt;
}

// The GNOME desktop's own screenshot (gnome-desktop.sh), native windows included; they are not
// on the X display.
inline QImage shellScreenshot() {
    static testsupport::TempFolder folder;
    const QString path = folder.path() + QStringLiteral("/screen.png");
    if (QProcess::execute(qEnvironmentVariable("GLIMMO_GNOME_SCREENSHOT"), {path}) != 0) return {};
    return QImage(path).convertToFormat(QImage::Format_RGB32);
}

// Whether a bubble drawn in frame (a window that holds a 14-point band of shadow around what it
// draws) starts just below the caret blinking in the compositor's screenshots (the shell's by
// default), about 12 points left of it (the last character ends at the caret). The shadow may
// lie over the caret's foot. Points are pixels times ratio, the X display's scale (Xft.dpi).
inline std::optional<QString> bubbleOffCaret(
    const QRect& frame, const std::function<QImage()>& shoot = shellScreenshot, double ratio = 1) {
    const auto pt = [ratio](double points) { return int(std::lround(points * ratio)); };
    const QRect drawn = frame.adjusted(pt(14), pt(14), -pt(14), -pt(14));
    const auto caret = blinkingCaret(drawn, 3000, shoot);
    if (!caret) return QStringLiteral("no caret blinks on the screen");
    const int below = drawn.top() - (caret->bottom() + 1);
    const int left = caret->left() - (frame.left() + pt(12));
    if (below >= 0 && below <= pt(30) && left >= -pt(4) && left <= pt(32)) return std::nullopt;
    return QStringLiteral("bubble at %1,%2, caret %3,%4..%5")
        .arg(frame.left())
        .arg(frame.top())
        .arg(caret->left())
        .arg(caret->top())
        .arg(caret->bottom());
}

}  // namespace desktop
