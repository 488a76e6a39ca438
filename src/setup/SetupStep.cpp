#include "setup/SetupStep.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include "setup/SetupLook.h"

namespace setup {

class SetupStep::Badge : public QWidget {
public:
    explicit Badge(const SetupStep& step) : step_(step) { setFixedSize(24, 24); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        QColor fill = look::brand();
        if (!step_.done_ && !step_.active_) fill.setAlphaF(0.12f);
        p.setPen(Qt::NoPen);
        p.setBrush(fill);
        p.drawEllipse(QRectF(rect()));
        if (step_.done_) {
            QPainterPath tick;
            tick.moveTo(7.3, 12.4);
            tick.lineTo(10.6, 15.6);
            tick.lineTo(16.8, 8.6);
            p.setPen(QPen(Qt::white, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            p.setBrush(Qt::NoBrush);
            p.drawPath(tick);
            return;
        }
        // The number reads as a cut-out of the window's background on the active badge.
        p.setPen(step_.active_ ? palette().color(QPalette::Window) : look::secondary(palette()));
        p.setFont(look::font(look::smallSize, QFont::DemiBold));
        p.drawText(rect(), Qt::AlignCenter, QString::number(step_.n_));
    }

private:
    const SetupStep& step_;
};

SetupStep::SetupStep(int n, const QString& title, QWidget* content, QWidget* parent)
    : QWidget(parent),
      n_(n),
      badge_(new Badge(*this)),
      title_(new QLabel(title)),
      content_(content),
      column_(new QVBoxLayout) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 12, 0, 12);
    row->setSpacing(14);
    row->addWidget(badge_, 0, Qt::AlignTop);
    column_->setSpacing(10);
    title_->setFont(look::font(15, QFont::DemiBold));
    // The title's line box is a little taller than the badge; centre the first line on it.
    title_->setMinimumHeight(24);
    column_->addWidget(title_);
    column_->addWidget(content_);
    row->addLayout(column_, 1);
    set(false, false);
}

void SetupStep::addNote(QWidget* note) {
    column_->addWidget(note);
}

void SetupStep::set(bool done, bool active) {
    done_ = done;
    active_ = active;
    title_->setForegroundRole(done || active ? QPalette::WindowText : QPalette::PlaceholderText);
    content_->setVisible(active);
    badge_->update();
}

}  // namespace setup
