#include "platform/linux/atspi/AtspiAx.h"

#include <signal.h>

#include <QElapsedTimer>
#include <QList>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "main/Log.h"
#include "platform/linux/atspi/AtElement.h"
#include "platform/linux/atspi/Atspi.h"
#include "platform/linux/atspi/AxRoles.h"
#include "platform/linux/atspi/AxText.h"
#include "platform/linux/atspi/TextRun.h"
#include "platform/linux/x11/DevicePixels.h"

namespace linuxdesk {

namespace {

// An application has a few windows; this only guards against a broken one.
constexpr int kWindowsLimit = 1000;
// The application element of a process is looked up again after this long, so that a
// restarted application (a new bus name under a reused process id) is found.
constexpr int kAppKeepMs = 3000;
// A process without a tree is asked about again sooner: it may be one still starting up.
constexpr int kMissKeepMs = 1000;
// How long a browser may take to make a selection it was asked for (a few frames).
constexpr int kSelectionSettleMs = 300;

std::optional<platform::Value> str(const std::optional<QString>& s) {
    if (!s) return std::nullopt;
    return platform::Value(*s);
}

std::optional<QString> attributeOf(const std::optional<std::map<QString, QString>>& attributes,
                                   std::initializer_list<const char*> keys) {
    if (!attributes) return std::nullopt;
    for (const char* key : keys) {
        auto it = attributes->find(QString::fromLatin1(key));
        if (it != attributes->end() && !it->second.isEmpty()) return it->second;
    }
    return std::nullopt;
}

}  // namespace

bool AtspiAx::connect() {
    if (connected_) return true;
    if (!at::init()) return false;
    connected_ = focus_.start();
    if (connected_ && events_.start()) cache_.useEvents(&events_);
    return connected_;
}

bool AtspiAx::trusted() {
    return bus_.enabled() && connect();
}

void AtspiAx::requestTrust() {
    bus_.enable();
}

std::optional<qint64> AtspiAx::pidOf(const AtRef& application) {
    const QString bus = at::busName(application);
    if (bus.isEmpty()) return std::nullopt;
    // Bus names are never reused, so the process behind one never changes.
    if (auto it = pidByBus_.find(bus); it != pidByBus_.end()) return it->second;
    const auto pid = at::processId(application);
    if (pid) pidByBus_[bus] = *pid;
    return pid;
}

std::optional<qint64> AtspiAx::processOf(const AtRef& application) {
    return pidOf(application);
}

std::optional<QString> AtspiAx::value(const platform::Element& element) {
    const auto v = attribute(element, QStringLiteral("AXValue"));
    const auto* s = v ? std::get_if<QString>(&*v) : nullptr;
    return s ? std::optional<QString>(*s) : std::nullopt;
}

bool AtspiAx::editable(const platform::Element& element) {
    return at::hasEditableText(AtElement::unwrap(element));
}

bool AtspiAx::replace(const platform::Element& element, const platform::Range& range,
                      const QString& replacement) {
    const AtRef ref = AtElement::unwrap(element);
    if (!ref) return false;
    const OffsetUnit unit = unitOf(ref);
    cache_.forgetText();
    if (document_.holds(ref)) return document_.replace(ref, range, replacement, unit);
    const auto text = at::text(ref);
    return text && axtext::replace(ref, *text, range, replacement, unit);
}

std::optional<int> AtspiAx::gtkVersion(const platform::Element& element) {
    // GTK 4 answers the toolkit only on the application element; GTK 3 names it "gtk".
    const AtRef app = at::application(AtElement::unwrap(element));
    if (at::toolkit(app).value_or(QString()).compare(QLatin1String("GTK"), Qt::CaseInsensitive))
        return std::nullopt;
    const auto version = at::toolkitVersion(app);
    bool ok = false;
    const int major = version ? version->section(u'.', 0, 0).toInt(&ok) : 0;
    return ok ? std::optional<int>(major) : std::nullopt;
}

platform::Element AtspiAx::focusedIn(qint64 pid) {
    const platform::Element app = application(pid);
    const auto f = app ? attribute(app, QStringLiteral("AXFocusedUIElement")) : std::nullopt;
    const auto* el = f ? std::get_if<platform::Element>(&*f) : nullptr;
    return el ? *el : nullptr;
}

platform::Element AtspiAx::application(qint64 pid) {
    if (!connect()) return nullptr;
    if (auto it = appByPid_.find(pid); it != appByPid_.end()) {
        const int keep = it->second.app ? kAppKeepMs : kMissKeepMs;
        if (it->second.age.elapsed() < keep) return AtElement::wrap(it->second.app);
        appByPid_.erase(it);
    }
    const AtRef desktop = at::desktop();
    const int count = at::childCount(desktop).value_or(0);
    for (int i = 0; i < count; ++i) {
        AtRef app = at::child(desktop, i);
        if (app && pidOf(app) == pid) {
            KnownApp& known = appByPid_[pid];
            known.app = app;
            known.age.start();
            return AtElement::wrap(app);
        }
    }
    appByPid_[pid].age.start();  // remembered as a miss
    if (reportedNoTree_.insert(pid).second)
        glimmo::log(QStringLiteral("no accessibility tree from process %1").arg(pid));
    return nullptr;
}

QString AtspiAx::toolkitOf(const AtRef& element) {
    const QString bus = at::busName(element);
    if (auto it = toolkitByBus_.find(bus); it != toolkitByBus_.end()) return it->second;
    auto toolkit = at::toolkit(element);
    // Qt 5 and GTK 4 name their toolkit only on the application element.
    if (!toolkit) toolkit = at::toolkit(at::application(element));
    if (toolkit) toolkitByBus_[bus] = *toolkit;
    return toolkit.value_or(QString());
}

OffsetUnit AtspiAx::unitOf(const AtRef& element) {
    return offsetUnitFor(toolkitOf(element));
}

OffsetUnit AtspiAx::selectionUnitOf(const AtRef& element) {
    // Chromium turns the selection's UTF-16 offsets into characters twice over (its caret only
    // once), so each character outside the Basic Multilingual Plane before them counts twice.
    return toolkitOf(element) == QLatin1String("Chromium") ? OffsetUnit::CodePointTwice
                                                           : unitOf(element);
}

AtRef AtspiAx::focusedWindow(const AtRef& application) {
    const int count = std::min(at::childCount(application).value_or(0), kWindowsLimit);
    for (int i = 0; i < count; ++i) {
        AtRef w = at::child(application, i);
        const auto role = cache_.role(w);
        const auto s = at::states(w);
        if (role && isWindowRole(*role) && s && s->active) return w;
    }
    return {};
}

void AtspiAx::noteEmptyTree(const AtRef& application) {
    const auto pid = pidOf(application);
    // Its process may have been missed once already, while it was still registering.
    if (!pid || bare_.count(*pid)) return;
    // Chromium and Electron show their pages only when started with the flag. Without it they
    // register bare windows (no child, or one that cannot be fetched), or nothing at all when
    // started before accessibility was on. Nothing later reaches a running one: "IsEnabled" or
    // "ScreenReaderEnabled" switched on, its events listened to, its tree walked.
    if (at::toolkit(application).value_or(QString()) != QLatin1String("Chromium")) return;
    const AtRef window = at::child(application, 0);
    if (!window || (at::childCount(window).value_or(0) > 0 && at::child(window, 0))) return;
    const QString name = at::name(application).value_or(QString());
    bare_[*pid] = name;
    glimmo::log(QStringLiteral("no accessibility tree from %1 (process %2); Chromium and Electron "
                               "applications show it when started with "
                               "--force-renderer-accessibility")
                    .arg(name.isEmpty() ? QStringLiteral("an application") : name)
                    .arg(*pid));
}

std::vector<QString> AtspiAx::restartNeeded() {
    std::vector<QString> names;
    for (auto it = bare_.begin(); it != bare_.end();) {
        // Restarted or quit: the process is gone, and with it the need.
        if (::kill(pid_t(it->first), 0) != 0 && errno == ESRCH) {
            reportedNoTree_.erase(it->first);
            it = bare_.erase(it);
            continue;
        }
        if (!it->second.isEmpty() &&
            std::find(names.begin(), names.end(), it->second) == names.end())
            names.push_back(it->second);
        ++it;
    }
    return names;
}

std::optional<platform::Value> AtspiAx::attribute(const platform::Element& element,
                                                  const QString& name) {
    const AtRef ref = AtElement::unwrap(element);
    if (ref) return read(ref, name);
    if (auto* run = dynamic_cast<const TextRun*>(element.get())) return readRun(*run, name);
    return std::nullopt;
}

std::optional<platform::Value> AtspiAx::readRun(const TextRun& run, const QString& name) {
    if (name == QLatin1String("AXRole")) return platform::Value(QStringLiteral("AXStaticText"));
    if (name == QLatin1String("AXValue")) return platform::Value(run.text());
    if (name == QLatin1String("AXParent")) return platform::Value(run.holder());
    if (name == QLatin1String("AXChildren")) return platform::Value(platform::ElementList{});
    return std::nullopt;
}

std::optional<QString> AtspiAx::heldText(const AtRef& e, const std::vector<AtRef>& children) {
    const auto role = cache_.role(e);
    if (!role || !cache_.hasText(e)) return std::nullopt;
    const auto s = cache_.states(e);
    // A text box's text is what the user types, and a static text is read whole already.
    if (!s || (s->editable && !s->readOnly)) return std::nullopt;
    if (axRole(*role, s, true) == QLatin1String("AXStaticText")) return std::nullopt;
    // Newer Chromium gives the text its own static children as well: then they carry it.
    for (const AtRef& c : children) {
        const auto r = c ? cache_.role(c) : std::nullopt;
        if (r && (*r == ATSPI_ROLE_STATIC || *r == ATSPI_ROLE_LABEL)) return std::nullopt;
    }
    return cache_.text(e);
}

std::optional<platform::Value> AtspiAx::readDocument(const AtRef& e, const QString& name) {
    if (name == QLatin1String("AXRole")) return platform::Value(QStringLiteral("AXTextArea"));
    if (name == QLatin1String("AXValue")) return str(document_.text(e));
    const auto range = document_.selectedRange(e, unitOf(e));
    if (!range) return std::nullopt;
    if (name == QLatin1String("AXSelectedTextRange")) return platform::Value(*range);
    const auto text = document_.text(e);
    return text ? str(text->mid(range->location, range->length)) : std::nullopt;
}

std::optional<platform::Value> AtspiAx::read(const AtRef& e, const QString& name) {
    if ((name == QLatin1String("AXRole") || name == QLatin1String("AXValue") ||
         name == QLatin1String("AXSelectedTextRange") || name == QLatin1String("AXSelectedText")) &&
        document_.holds(e))
        return readDocument(e, name);
    if (name == QLatin1String("AXRole")) {
        const auto role = cache_.role(e);
        if (!role) return std::nullopt;
        const bool texty = isTextRole(*role) || *role == ATSPI_ROLE_COMBO_BOX;
        return platform::Value(
            axRole(*role, texty ? cache_.states(e) : std::nullopt, texty && cache_.hasText(e)));
    }
    if (name == QLatin1String("AXSubrole")) {
        const auto role = cache_.role(e);
        if (!role) return std::nullopt;
        return str(axSubrole(*role, isTextRole(*role) ? cache_.attributes(e) : std::nullopt));
    }
    if (name == QLatin1String("AXValue")) return str(cache_.text(e));
    if (name == QLatin1String("AXSelectedTextRange")) {
        const auto text = cache_.text(e);
        const auto r =
            text ? axtext::selectedRange(e, *text, unitOf(e), selectionUnitOf(e)) : std::nullopt;
        return r ? std::optional<platform::Value>(*r) : std::nullopt;
    }
    if (name == QLatin1String("AXSelectedText")) {
        const auto text = cache_.text(e);
        return text ? str(axtext::selectedText(e, *text, unitOf(e), selectionUnitOf(e)))
                    : std::nullopt;
    }
    if (name == QLatin1String("AXTitle")) return str(cache_.name(e));
    if (name == QLatin1String("AXDescription")) return str(cache_.description(e));
    if (name == QLatin1String("AXIdentifier")) {
        const auto id = cache_.accessibleId(e);
        return id && !id->isEmpty() ? str(id) : std::nullopt;
    }
    if (name == QLatin1String("AXPlaceholderValue"))
        return str(attributeOf(cache_.attributes(e), {"placeholder-text", "placeholder"}));
    if (name == QLatin1String("AXPosition") || name == QLatin1String("AXSize")) {
        auto r = at::extents(e);
        if (!r) return std::nullopt;
        r = onDesktop(e, *r);
        if (name == QLatin1String("AXPosition"))
            return platform::Value(platform::Point{r->x, r->y});
        return platform::Value(platform::Size{r->width, r->height});
    }
    if (name == QLatin1String("AXParent")) {
        AtRef p = at::parent(e);
        // The desktop above an application is no element of that application.
        if (!p || cache_.role(p) == ATSPI_ROLE_DESKTOP_FRAME) return std::nullopt;
        return platform::Value(AtElement::wrap(p));
    }
    if (name == QLatin1String("AXChildren")) {
        const auto count = at::childCount(e);
        if (!count) return std::nullopt;
        std::vector<AtRef> children;
        children.reserve(size_t(std::max(*count, 0)));
        for (int i = 0; i < *count; ++i) children.push_back(at::child(e, i));
        if (const auto text = heldText(e, children))
            return platform::Value(TextRun::interleave(e, *text, children));
        platform::ElementList list;
        for (const AtRef& c : children)
            if (c) list.push_back(AtElement::wrap(c));
        return platform::Value(list);
    }
    if (name == QLatin1String("AXFocusedUIElement")) {
        if (cache_.role(e) != ATSPI_ROLE_APPLICATION) return std::nullopt;
        AtRef f = focus_.focused(e);
        if (!f) noteEmptyTree(e);
        return f ? std::optional<platform::Value>(AtElement::wrap(f)) : std::nullopt;
    }
    if (name == QLatin1String("AXFocusedWindow")) {
        if (cache_.role(e) != ATSPI_ROLE_APPLICATION) return std::nullopt;
        AtRef w = focusedWindow(e);
        return w ? std::optional<platform::Value>(AtElement::wrap(w)) : std::nullopt;
    }
    if (name == QLatin1String("AXURL")) {
        auto url = at::documentAttribute(e, "DocURL");
        if (!url) url = at::documentAttribute(e, "URI");
        return url ? std::optional<platform::Value>(platform::Url{*url}) : std::nullopt;
    }
    // No toolkit bridge reports the input method's composition ("AXTextInputMarkedRange").
    return std::nullopt;
}

std::optional<platform::Rect> AtspiAx::bounds(const AtRef& ref, const platform::Range& range,
                                              at::Coords coords) {
    const OffsetUnit unit = unitOf(ref);
    if (document_.holds(ref)) return document_.boundsForRange(ref, range, unit, coords);
    const auto text = cache_.text(ref);
    return text ? axtext::boundsForRange(ref, *text, range, unit, coords) : std::nullopt;
}

std::optional<platform::Value> AtspiAx::parameterized(const platform::Element& element,
                                                      const QString& name,
                                                      const platform::Value& parameter) {
    const AtRef ref = AtElement::unwrap(element);
    const auto* range = std::get_if<platform::Range>(&parameter);
    if (!ref || !range || name != QLatin1String("AXBoundsForRange")) return std::nullopt;
    auto r = bounds(ref, *range, at::Coords::Screen);
    if (!r) {
        // GTK 4 answers text positions only relative to its window.
        const auto w = bounds(ref, *range, at::Coords::Window);
        if (w && !(w->x == 0 && w->y == 0)) {
            const ReportedToScreen map = mapping_.of(ref);
            r = platform::Rect{w->x + map.windowX, w->y + map.windowY, w->width, w->height};
        }
    }
    if (!r) return std::nullopt;
    return platform::Value(onDesktop(ref, *r));
}

std::optional<platform::Rect> AtspiAx::windowBounds(const platform::Element& element,
                                                    const platform::Range& range) {
    const AtRef ref = AtElement::unwrap(element);
    return ref ? bounds(ref, range, at::Coords::Window) : std::nullopt;
}

std::optional<platform::Rect> AtspiAx::windowFrame(const platform::Element& element) {
    const AtRef ref = AtElement::unwrap(element);
    return ref ? at::extents(ref, at::Coords::Window) : std::nullopt;
}

platform::Rect AtspiAx::onDesktop(const AtRef& element, const platform::Rect& reported) {
    // A zero origin is how applications say they do not know; the engine looks for it.
    if (reported.x == 0 && reported.y == 0) return reported;
    return fromDevicePixels(mapping_.of(element).apply(reported));
}

bool AtspiAx::setAttribute(const platform::Element& element, const QString& name,
                           const platform::Value& value) {
    const AtRef ref = AtElement::unwrap(element);
    if (!ref) return false;
    // Toolkits here build their trees once the accessibility bus is enabled: there is
    // nothing more to switch on per application, so these writes are accepted and dropped.
    if (name == QLatin1String("AXManualAccessibility") ||
        name == QLatin1String("AXEnhancedUserInterface"))
        return true;
    if (name == QLatin1String("AXSelectedTextRange")) {
        const auto* range = std::get_if<platform::Range>(&value);
        if (!range) return false;
        cache_.forgetText();
        const OffsetUnit unit = unitOf(ref);
        const bool document = document_.holds(ref);
        const auto text = document ? std::nullopt : at::text(ref);
        const bool asked = document ? document_.setSelectedRange(ref, *range, unit)
                                    : text && axtext::setSelectedRange(ref, *text, *range, unit);
        // A browser answers at once and selects a moment later, in the page's own time; the
        // engine reads the selection back right away, so it is waited for here, briefly.
        const QString toolkit = toolkitOf(ref);
        if (asked && (toolkit == QLatin1String("Chromium") || toolkit == QLatin1String("Gecko"))) {
            QElapsedTimer waited;
            waited.start();
            while (waited.elapsed() < kSelectionSettleMs) {
                const auto now =
                    document ? document_.selectedRange(ref, unit)
                             : axtext::selectedRange(ref, *text, unit, selectionUnitOf(ref));
                if (now == *range) break;
                QThread::msleep(10);
            }
        }
        return asked;
    }
    return false;
}

bool AtspiAx::same(const platform::Element& a, const platform::Element& b) {
    auto* r = dynamic_cast<const TextRun*>(a.get());
    auto* q = dynamic_cast<const TextRun*>(b.get());
    if (r || q) return r && q && r->index() == q->index() && same(r->holder(), q->holder());
    auto* x = dynamic_cast<const AtElement*>(a.get());
    auto* y = dynamic_cast<const AtElement*>(b.get());
    if (!x || !y) return false;
    return x->bus() == y->bus() && x->path() == y->path() && !x->bus().isEmpty();
}

}  // namespace linuxdesk
