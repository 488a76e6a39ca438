#pragma once
// The text caret found in the screen's pixels alone: the thin upright bar that blinks, free of
// anything the application reports about itself.

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QRect>
#include <QScreen>
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

}  // namespace desktop
