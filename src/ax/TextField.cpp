#include "ax/TextField.h"

namespace ax {

using platform::Element;
using platform::Range;
using platform::Rect;

namespace {

// About one line of text, where an empty box's caret stands.
constexpr double kFirstLineHeight = 24;

template <class T>
std::optional<T> valueAttr(platform::Ax& ax, const Element& element, const QString& name) {
    if (!element) return std::nullopt;
    auto value = ax.attribute(element, name);
    if (!value) return std::nullopt;
    if (auto* typed = std::get_if<T>(&*value)) return *typed;
    return std::nullopt;
}

}  // namespace

std::optional<QString> stringAttr(platform::Ax& ax, const Element& element, const QString& name) {
    return valueAttr<QString>(ax, element, name);
}

std::optional<Element> elementAttr(platform::Ax& ax, const Element& element, const QString& name) {
    auto value = valueAttr<Element>(ax, element, name);
    if (!value || !*value) return std::nullopt;
    return value;
}

std::optional<Element> focusedElement(platform::Ax& ax, qint64 pid) {
    auto app = ax.application(pid);
    if (!app) return std::nullopt;
    return elementAttr(ax, app, QStringLiteral("AXFocusedUIElement"));
}

std::optional<Range> selectedRange(platform::Ax& ax, const Element& element) {
    return valueAttr<Range>(ax, element, QStringLiteral("AXSelectedTextRange"));
}

bool setSelectedRange(platform::Ax& ax, const Element& element, qint64 location, qint64 length) {
    if (!element) return false;
    const Range wanted{location, length};
    if (!ax.setAttribute(element, QStringLiteral("AXSelectedTextRange"), wanted)) return false;
    // Some applications accept the write and put the selection elsewhere.
    auto now = selectedRange(ax, element);
    return now && *now == wanted;
}

std::optional<Range> markedRange(platform::Ax& ax, const Element& element) {
    return valueAttr<Range>(ax, element, QStringLiteral("AXTextInputMarkedRange"));
}

std::optional<Rect> bounds(platform::Ax& ax, const Element& element, qint64 caret) {
    if (!element) return std::nullopt;
    // An empty range has no box of its own: browsers answer it with their window's corner.
    auto value = caret > 0 ? ax.parameterized(element, QStringLiteral("AXBoundsForRange"),
                                              Range{caret - 1, 1})
                           : std::nullopt;
    if (value) {
        if (auto* rect = std::get_if<Rect>(&*value)) {
            // Empty or zero rectangles mean the application does not really know.
            if (rect->height > 0 && !(rect->x == 0 && rect->y == 0)) return *rect;
        }
    }
    auto position = valueAttr<platform::Point>(ax, element, QStringLiteral("AXPosition"));
    auto size = valueAttr<platform::Size>(ax, element, QStringLiteral("AXSize"));
    if (!position || !size) return std::nullopt;
    Rect box{position->x, position->y, size->width, size->height};
    // With nothing before it, the caret stands on the box's first line, not below the whole box.
    if (caret == 0) box.height = std::min(box.height, kFirstLineHeight);
    return box;
}

bool isTextField(platform::Ax& ax, const Element& element) {
    const QString role = stringAttr(ax, element, QStringLiteral("AXRole")).value_or(QString());
    const QString subrole =
        stringAttr(ax, element, QStringLiteral("AXSubrole")).value_or(QString());
    if (role == QLatin1String("AXSecureTextField") ||
        subrole == QLatin1String("AXSecureTextField") || subrole == QLatin1String("AXSearchField"))
        return false;

    // Address bars, search and password boxes often hide behind a plain role; their
    // descriptive texts give them away.
    QString joined;
    for (const char* name : {"AXDescription", "AXTitle", "AXIdentifier", "AXPlaceholderValue"}) {
        auto text = stringAttr(ax, element, QString::fromLatin1(name));
        if (!text) continue;
        if (!joined.isEmpty()) joined += u' ';
        joined += text->toLower();
    }
    for (const char* word : {"address", "search", "password"}) {
        if (joined.contains(QLatin1String(word))) return false;
    }
    return role == QLatin1String("AXTextField") || role == QLatin1String("AXTextArea") ||
           role == QLatin1String("AXComboBox");
}

}  // namespace ax
