#include "setup/SetupView.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

#include "overlay/Style.h"
#include "setup/AppIcon.h"
#include "setup/RestartHint.h"
#include "setup/SetupLook.h"
#include "setup/SetupStep.h"
#include "setup/Spinner.h"

namespace setup {

namespace {

// Blank as the buttons see it: spaces and tabs only.
bool blank(const QString& text) {
    for (const QChar c : text)
        if (c != QLatin1Char(' ') && c != QLatin1Char('\t')) return false;
    return true;
}

QHBoxLayout* row(int spacing) {
    auto* r = new QHBoxLayout;
    r->setContentsMargins(0, 0, 0, 0);
    r->setSpacing(spacing);
    return r;
}

QVBoxLayout* column(QWidget* owner, int spacing) {
    auto* c = new QVBoxLayout(owner);
    c->setContentsMargins(0, 0, 0, 0);
    c->setSpacing(spacing);
    return c;
}

QLineEdit* field(const QString& placeholder, int maxWidth) {
    auto* f = new QLineEdit;
    f->setPlaceholderText(placeholder);
    f->setMaximumWidth(maxWidth);
    return f;
}

// The launch flag stays on one line: broken at a hyphen it would read as two words.
QString flagWhole(QString text) {
    static const QString flag = QStringLiteral("--force-renderer-accessibility");
    QString whole = flag;
    whole.replace(QLatin1Char('-'), QStringLiteral("-\u2060"));  // a word joiner after each
    return text.replace(flag, whole);
}

// Keeps a field showing the model's text without disturbing the caret while the user types.
void showText(QLineEdit* f, const QString& text) {
    if (f->text() != text) f->setText(text);
}

}  // namespace

SetupView::SetupView(std::shared_ptr<Setup> model, SetupActions actions, QWidget* parent)
    : QWidget(parent), s_(std::move(model)), actions_(std::move(actions)) {
    setWindowTitle(QStringLiteral("Set up Glimmo"));
    auto* main = column(this, 0);
    main->setContentsMargins(look::padding, look::padding, look::padding, look::padding);
    main->addWidget(header());
    main->addSpacing(14);
    main->addWidget(look::divider());
    steps_[0] = new SetupStep(1, QStringLiteral("About you"), aboutContent());
    steps_[1] = new SetupStep(2, QStringLiteral("Allow Accessibility"), accessContent());
    // Once accessibility is on, the applications found unreadable since are named here, and
    // the ones whose launchers were prepared.
    restartNote_ = look::secondaryLabel(QString());
    steps_[1]->addNote(restartNote_);
    steps_[2] = new SetupStep(3, QStringLiteral("Connect Claude"), claudeContent());
    for (SetupStep* step : steps_) main->addWidget(step);
    main->addWidget(look::divider());
    main->addSpacing(14);
    main->addWidget(footer());

    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, this,
                &SetupView::pressDefault);
    connect(s_.get(), &Setup::changed, this, &SetupView::sync);
    usePalette(QApplication::palette());
    sync();
    fit();
}

QWidget* SetupView::header() {
    auto* box = new QWidget;
    auto* r = row(14);
    box->setLayout(r);
    auto* icon = new QLabel;
    icon->setPixmap(appIcon(52, qApp->devicePixelRatio()));
    icon->setFixedSize(52, 52);
    r->addWidget(icon, 0, Qt::AlignVCenter);
    auto* texts = new QWidget;
    auto* c = column(texts, 2);
    title_ = new QLabel;
    title_->setFont(look::font(22, QFont::DemiBold));
    subtitle_ = look::secondaryLabel(QString());
    c->addWidget(title_);
    c->addWidget(subtitle_);
    r->addWidget(texts, 1, Qt::AlignVCenter);
    return box;
}

QWidget* SetupView::aboutContent() {
    auto* box = new QWidget;
    auto* c = column(box, 10);
    c->addWidget(look::secondaryLabel(
        QStringLiteral("So the English sounds like you. It stays on this computer.")));
    auto* fields = new QVBoxLayout;
    fields->setSpacing(8);
    name_ = field(QStringLiteral("Name"), 320);
    role_ = field(QStringLiteral("Role, e.g. an account executive"), 320);
    language_ = field(QStringLiteral("First language, e.g. English"), 320);
    for (QLineEdit* f : {name_, role_, language_}) fields->addWidget(f);
    c->addLayout(fields);
    connect(name_, &QLineEdit::textEdited, s_.get(), &Setup::setName);
    connect(role_, &QLineEdit::textEdited, s_.get(), &Setup::setRole);
    connect(language_, &QLineEdit::textEdited, s_.get(), &Setup::setLanguage);
    save_ = look::button(QStringLiteral("Continue"), true);
    connect(save_, &QPushButton::clicked, s_.get(), &Setup::save);
    auto* buttons = row(8);
    buttons->addWidget(save_);
    buttons->addStretch();
    c->addLayout(buttons);
    return box;
}

QWidget* SetupView::accessContent() {
    auto* box = new QWidget;
    auto* c = column(box, 10);
    accessText_ = look::secondaryLabel(QString());
    c->addWidget(accessText_);
    restartHint_ = look::secondaryLabel(QString(), look::smallSize);
    c->addWidget(restartHint_);
    accessButton_ = look::button(QString(), true);
    connect(accessButton_, &QPushButton::clicked, s_.get(), &Setup::openAccessibility);
    auto* buttons = row(8);
    buttons->addWidget(accessButton_);
    buttons->addStretch();
    c->addLayout(buttons);
    return box;
}

QWidget* SetupView::claudeContent() {
    auto* box = new QWidget;
    auto* c = column(box, 0);

    preparing_ = new QWidget;
    auto* prep = row(10);
    preparing_->setLayout(prep);
    prep->addWidget(new Spinner, 0, Qt::AlignVCenter);
    prep->addWidget(look::secondaryLabel(QStringLiteral(
                        "Getting Claude ready for Glimmo. Your browser opens in a moment.")),
                    1);
    c->addWidget(preparing_);

    signingIn_ = new QWidget;
    auto* sign = column(signingIn_, 10);
    sign->addWidget(look::secondaryLabel(QStringLiteral(
        "A Claude page opened in your browser. Click Authorize, then come back here.")));
    auto* waiting = row(10);
    waiting->addWidget(new Spinner, 0, Qt::AlignVCenter);
    openPage_ = look::button(QStringLiteral("Open the page again"));
    connect(openPage_, &QPushButton::clicked, s_.get(), &Setup::openLoginPage);
    auto* cancel = look::button(QStringLiteral("Cancel"));
    connect(cancel, &QPushButton::clicked, s_.get(), &Setup::cancelSignIn);
    waiting->addWidget(openPage_);
    waiting->addWidget(cancel);
    waiting->addStretch();
    sign->addLayout(waiting);
    sign->addWidget(look::secondaryLabel(QStringLiteral("If the page shows a code, paste it here:"),
                                         look::smallSize));
    auto* paste = row(8);
    code_ = field(QStringLiteral("Code"), 260);
    connect(code_, &QLineEdit::textEdited, s_.get(), &Setup::setCode);
    submit_ = look::button(QStringLiteral("Continue"), true);
    connect(submit_, &QPushButton::clicked, s_.get(), &Setup::submitCode);
    paste->addWidget(code_, 1);
    paste->addWidget(submit_);
    paste->addStretch();
    sign->addLayout(paste);
    c->addWidget(signingIn_);

    ready_ = new QWidget;
    auto* r = column(ready_, 10);
    r->addWidget(look::secondaryLabel(
        QStringLiteral("Glimmo writes with Claude, using the same Claude account as your Claude "
                       "app (Pro, Max, Team or Enterprise).")));
    auto* go = row(10);
    connect_ = look::button(QStringLiteral("Connect Claude"), true);
    connect(connect_, &QPushButton::clicked, s_.get(), &Setup::connect);
    go->addWidget(connect_);
    checking_ = new QWidget;
    auto* checkRow = row(8);
    checking_->setLayout(checkRow);
    checkRow->addWidget(new Spinner, 0, Qt::AlignVCenter);
    auto* checkingText = look::secondaryLabel(QStringLiteral("Checking…"));
    checkingText->setWordWrap(false);
    checkRow->addWidget(checkingText);
    go->addWidget(checking_);
    go->addStretch();
    r->addLayout(go);
    failed_ = new QLabel(
        QStringLiteral("That didn't finish. Check your internet connection and try again."));
    failed_->setWordWrap(true);
    failed_->setFont(look::font(look::bodySize));
    r->addWidget(failed_);
    c->addWidget(ready_);
    return box;
}

QWidget* SetupView::footer() {
    auto* box = new QWidget;
    auto* c = column(box, 0);
    unfinished_ = look::secondaryLabel(
        QStringLiteral("You can close this and finish later from the Glimmo icon in the system "
                       "tray."),
        look::smallSize);
    c->addWidget(unfinished_);

    finished_ = new QWidget;
    auto* r = row(6);
    finished_->setLayout(r);
    // Wraps rather than clips where the desktop's font runs wide.
    r->addWidget(
        look::secondaryLabel(QStringLiteral("Type anywhere, then pause."), look::smallSize), 1);
    auto* apps = look::button(QStringLiteral("Choose apps…"));
    connect(apps, &QPushButton::clicked, this, [this] {
        actions_.showApps();
        actions_.close();
    });
    tryIt_ = look::button(QStringLiteral("Try it now"), true);
    connect(tryIt_, &QPushButton::clicked, this, [this] {
        actions_.tryIt();
        actions_.close();
    });
    auto* done = look::button(QStringLiteral("Done"));
    connect(done, &QPushButton::clicked, this, [this] { actions_.close(); });
    r->addWidget(apps);
    r->addWidget(tryIt_);
    r->addWidget(done);
    c->addWidget(finished_);
    return box;
}

void SetupView::usePalette(const QPalette& base) {
    QPalette p = base;
    p.setColor(QPalette::PlaceholderText, look::secondary(base));
    // The dividers: the border colour laid over the window, opaque.
    const QColor window = base.color(QPalette::Window);
    const QColor line = overlay::style::border(base);
    const double a = line.alphaF();
    p.setColor(QPalette::Mid, QColor::fromRgbF(float(window.redF() * (1 - a) + line.redF() * a),
                                               float(window.greenF() * (1 - a) + line.greenF() * a),
                                               float(window.blueF() * (1 - a) + line.blueF() * a)));
    setPalette(p);
    setAutoFillBackground(true);
    setStyleSheet(look::styleSheet(p));
    QPalette red = p;
    red.setColor(QPalette::WindowText, QColor(0xc4, 0x2b, 0x1c));
    failed_->setPalette(red);
}

void SetupView::sync() {
    const Setup& s = *s_;
    const bool all = s.allDone();
    title_->setText(all ? QStringLiteral("You're set") : QStringLiteral("Set up Glimmo"));
    subtitle_->setText(all ? QStringLiteral("Glimmo is in the system tray, in your panel.")
                           : QStringLiteral("Three steps. Each one ticks itself when it's done."));

    steps_[0]->set(s.aboutDone(), !s.aboutDone());
    steps_[1]->set(s.access(), s.aboutDone() && !s.access());
    steps_[2]->set(s.claudeOK(), s.aboutDone() && s.access() && !s.claudeOK());

    showText(name_, s.name());
    showText(role_, s.role());
    showText(language_, s.language());
    save_->setEnabled(!blank(s.name()));

    accessText_->setText(
        s.accessOpened()
            ? QStringLiteral("Waiting for accessibility support to come on. Apps that were "
                             "already open may need a restart.")
            : QStringLiteral("This is how Glimmo reads the text box you're typing in. It switches "
                             "on your desktop's accessibility support."));
    const QString restart =
        flagWhole(restartHint(s.restartApps(), s.preparedApps(), s.logOutDue()));
    restartHint_->setText(s.desktopNote().isEmpty() ? restart
                                                    : s.desktopNote() + u' ' + restart);
    restartNote_->setText(restart);
    restartNote_->setVisible(s.access() && (s.logOutDue() || !(s.restartApps().isEmpty() &&
                                                               s.preparedApps().isEmpty())));
    accessButton_->setText(s.accessOpened() ? QStringLiteral("Turn on accessibility again")
                                            : QStringLiteral("Turn on accessibility"));

    const bool preparing = s.installing() && s.wantsSignIn();
    const bool signing = !preparing && s.signingIn();
    preparing_->setVisible(preparing);
    signingIn_->setVisible(signing);
    ready_->setVisible(!preparing && !signing);
    openPage_->setVisible(s.loginURL().has_value());
    showText(code_, s.code());
    submit_->setEnabled(!blank(s.code()));
    checking_->setVisible(s.checking());
    failed_->setVisible(s.installFailed());

    unfinished_->setVisible(!all);
    finished_->setVisible(all);

    // Only the current step's button, or the footer's, answers Return.
    for (QPushButton* b : {save_, accessButton_, submit_, connect_, tryIt_})
        b->setDefault(b == defaultButton());

    // The layouts learn of shown and hidden parts in a later turn.
    QTimer::singleShot(0, this, &SetupView::fit);
}

bool SetupView::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest) fit();
    return handled;
}

// The window follows the content's height.
void SetupView::fit() {
    layout()->activate();
    const QSize size = sizeHint();
    if (size != this->size() || minimumSize() != size) setFixedSize(size);
}

QPushButton* SetupView::defaultButton() const {
    const Setup& s = *s_;
    if (s.allDone()) return tryIt_;
    if (!s.aboutDone()) return save_;
    if (!s.access()) return accessButton_;
    if (s.installing() && s.wantsSignIn()) return nullptr;
    if (s.signingIn()) return submit_;
    return connect_;
}

void SetupView::pressDefault() {
    if (QPushButton* b = defaultButton(); b && b->isEnabled()) b->click();
}

QSize SetupView::sizeHint() const {
    return {look::width, layout()->totalHeightForWidth(look::width)};
}

}  // namespace setup
