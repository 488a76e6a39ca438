#include "ax/Conversation.h"

#include <QStringList>

#include "ax/Browser.h"
#include "ax/TextField.h"
#include "main/Constants.h"
#include "rules/Catalogue.h"

namespace ax {

using platform::Element;

namespace {

constexpr int maxDepth = 60;
constexpr int maxVisited = 6000;
constexpr double maxSeconds = 0.6;
constexpr qsizetype conversationLimit = 3500;
constexpr qsizetype quotedLimit = 3000;

// Line breaks count as content: a message may be a bare line feed in some chat clients.
bool blank(const QString& text) {
    for (QChar c : text) {
        if (c != u' ' && c != u'\t') return false;
    }
    return true;
}

// One capture: the walk stops for good at the box or at a limit, keeping what it gathered.
class Walk {
public:
    Walk(platform::Ax& ax, const platform::Clock& clock, const Element& box)
        : ax_(ax), clock_(clock), box_(box), start_(clock.now()) {}

    void visit(const Element& element, int depth) {
        if (stopped_ || depth > maxDepth) return;
        if (++visited_ > maxVisited || clock_.now() - start_ > maxSeconds ||
            ax_.same(element, box_)) {
            stopped_ = true;
            return;
        }
        if (stringAttr(ax_, element, QStringLiteral("AXRole")) == QStringLiteral("AXStaticText")) {
            auto value = stringAttr(ax_, element, QStringLiteral("AXValue"));
            if (value && !blank(*value)) out_.append(*value);
        }
        auto children = ax_.attribute(element, QStringLiteral("AXChildren"));
        if (!children) return;
        auto* list = std::get_if<platform::ElementList>(&*children);
        if (!list) return;
        for (const auto& child : *list) {
            if (child) visit(child, depth + 1);
        }
    }

    QString joined() const { return out_.join(u' '); }

private:
    platform::Ax& ax_;
    const platform::Clock& clock_;
    const Element& box_;
    const double start_;
    QStringList out_;
    int visited_ = 0;
    bool stopped_ = false;
};

std::optional<QString> addressOf(platform::Ax& ax, const Element& area) {
    auto value = ax.attribute(area, QStringLiteral("AXURL"));
    if (!value) return std::nullopt;
    if (auto* url = std::get_if<platform::Url>(&*value)) return url->text;
    if (auto* text = std::get_if<QString>(&*value)) return *text;
    return std::nullopt;
}

}  // namespace

std::optional<QString> replySite(const QString& host) {
    static const QList<std::pair<QString, QString>> sites{
        {QStringLiteral("mail.google.com"), QStringLiteral("Gmail")},
        {QStringLiteral("app.slack.com"), QStringLiteral("Slack")},
        {QStringLiteral("outlook.office.com"), QStringLiteral("Outlook")},
        {QStringLiteral("outlook.office365.com"), QStringLiteral("Outlook")},
        {QStringLiteral("outlook.live.com"), QStringLiteral("Outlook")},
        {QStringLiteral("teams.microsoft.com"), QStringLiteral("Teams")},
        {QStringLiteral("teams.live.com"), QStringLiteral("Teams")},
        {QStringLiteral("web.whatsapp.com"), QStringLiteral("WhatsApp")},
        {QStringLiteral("discord.com"), QStringLiteral("Discord")},
    };
    for (const auto& [known, name] : sites)
        if (host.compare(known, Qt::CaseInsensitive) == 0) return name;
    return std::nullopt;
}

std::optional<CaptureRoot> captureRoot(platform::Ax& ax, const platform::RunningApp& app,
                                       const Element& appElement, const Element& box) {
    const bool replyApp = rules::isReplyApp(app.bundleId);
    std::optional<Element> area;
    QString site;
    if (glimmo::browsers().contains(app.bundleId)) {
        // The same walk as pageHost, done once: the area is the root on a reply site.
        area = webArea(ax, box);
        const auto address = area ? addressOf(ax, *area) : std::nullopt;
        const auto host = address ? hostOf(*address) : std::nullopt;
        site = host ? replySite(*host).value_or(QString()) : QString();
    }
    std::optional<Element> root;
    if (!site.isEmpty()) {
        root = area;
    } else if (replyApp) {
        root = elementAttr(ax, appElement, QStringLiteral("AXFocusedWindow"));
    } else {
        return std::nullopt;
    }
    if (!root || !*root) return std::nullopt;
    return CaptureRoot{*root, site};
}

QString conversation(platform::Ax& ax, const platform::Clock& clock, const Element& root,
                     const Element& box) {
    Walk walk(ax, clock, box);
    if (root) walk.visit(root, 0);
    return walk.joined();
}

std::optional<ReplyContext> replyContext(platform::Ax& ax, const platform::Clock& clock,
                                         const platform::RunningApp& app, const Element& appElement,
                                         const Element& box, const QString& text, qint64 caret) {
    auto root = captureRoot(ax, app, appElement, box);
    if (!root) return std::nullopt;
    ReplyContext context;
    context.conversation =
        lastGraphemes(conversation(ax, clock, root->root, box), conversationLimit);
    const qint64 from = std::clamp<qint64>(caret, 0, text.size());
    // A mail reply holds the message being answered below the caret.
    context.quoted = firstGraphemes(text.mid(from).trimmed(), quotedLimit);
    context.site = root->site;
    return context;
}

}  // namespace ax
