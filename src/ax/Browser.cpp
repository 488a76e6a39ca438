#include "ax/Browser.h"

#include <QRegularExpression>
#include <QUrl>

#include "ax/TextField.h"
#include "main/Constants.h"

namespace ax {

using platform::Element;

namespace {

// Chat windows nest deeply; deeper than this is not a page but a walk gone astray.
constexpr int maxElements = 60;

}  // namespace

std::optional<Element> webArea(platform::Ax& ax, const Element& element) {
    Element at = element;
    for (int examined = 0; examined < maxElements && at; ++examined) {
        if (stringAttr(ax, at, QStringLiteral("AXRole")) == QStringLiteral("AXWebArea")) return at;
        auto parent = elementAttr(ax, at, QStringLiteral("AXParent"));
        if (!parent) return std::nullopt;
        at = *parent;
    }
    return std::nullopt;
}

std::optional<QString> webAreaURL(platform::Ax& ax, const Element& element) {
    auto area = webArea(ax, element);
    if (!area) return std::nullopt;
    auto value = ax.attribute(*area, QStringLiteral("AXURL"));
    if (!value) return std::nullopt;
    if (auto* url = std::get_if<platform::Url>(&*value)) return url->text;
    // Some browsers hand the address over as a plain string.
    if (auto* text = std::get_if<QString>(&*value)) return *text;
    return std::nullopt;
}

std::optional<QString> pageHost(platform::Ax& ax, const Element& element) {
    const auto address = webAreaURL(ax, element);
    return address ? hostOf(*address) : std::nullopt;
}

std::optional<QString> hostOf(const QString& address) {
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty()) return std::nullopt;
    // The host as the address writes it: the parser would lower-case it.
    QStringView authority(address);
    authority = authority.mid(authority.indexOf(QLatin1String("//")) + 2);
    authority = authority.left(authority.indexOf(QRegularExpression(QStringLiteral("[/?#]"))));
    authority = authority.mid(authority.lastIndexOf(u'@') + 1);
    if (authority.startsWith(u'[')) return url.host();  // an IPv6 address has no letter case
    if (const qsizetype colon = authority.indexOf(u':'); colon >= 0)
        authority = authority.left(colon);
    const QString host = QUrl::fromPercentEncoding(authority.toUtf8());
    // Anything the parser reads differently (an international name) keeps the parser's host.
    return host.compare(url.host(), Qt::CaseInsensitive) == 0 ? host : url.host();
}

void prime(platform::Ax& ax, std::set<qint64>& primed, const platform::RunningApp& app) {
    if (!primed.insert(app.pid).second) return;
    auto element = ax.application(app.pid);
    if (!element) return;
    // Most applications refuse these; that is not a failure.
    ax.setAttribute(element, QStringLiteral("AXManualAccessibility"), true);
    if (glimmo::chromiumBrowsers().contains(app.bundleId))
        ax.setAttribute(element, QStringLiteral("AXEnhancedUserInterface"), true);
}

}  // namespace ax
