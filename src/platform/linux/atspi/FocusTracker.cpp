#include "platform/linux/atspi/FocusTracker.h"

#include <vector>

#include "platform/linux/atspi/Atspi.h"
#include "platform/linux/atspi/AxRoles.h"

namespace linuxdesk {

namespace {

// A resynchronising search stops after this many elements, and looks at most this many
// children of one element: huge lists and tables hold no focus worth finding that way.
constexpr int kSearchBudget = 2500;
constexpr int kChildrenLimit = 300;
// How often one application's tree may be searched while nothing in it has the focus.
constexpr int kSearchIntervalMs = 1000;
// How long an element reported focused by its own event is believed without asking.
constexpr int kCheckIntervalMs = 1000;
// How far below a focused element a focused one is looked for.
constexpr int kInnerDepth = 4;
constexpr int kInnerChildren = 4;

// Thunderbird's compose window reports focus on a childless panel under the window when it
// gets the keyboard back (after the synthetic paste), while its message body keeps the focus
// and the caret. Such an element holds nothing to type into: the element focused before it,
// when that still has the focus, is the one to follow.
bool standIn(const AtRef& element) {
    const auto role = at::role(element);
    return (role == ATSPI_ROLE_PANEL || role == ATSPI_ROLE_FILLER) &&
           at::childCount(element).value_or(0) == 0;
}

bool stillFocused(const AtRef& element) {
    const auto s = element ? at::states(element) : std::nullopt;
    return s && s->focused && !s->defunct;
}

// WebKit reports the scroll pane of a web view focused as well as the document inside it, and
// sends its focus events from the page's own process: the innermost focused element, among
// the first few children, is the one typed into.
AtRef innermostFocused(AtRef node) {
    for (int depth = 0; depth < kInnerDepth; ++depth) {
        AtRef inner;
        const int n = std::min(at::childCount(node).value_or(0), kInnerChildren);
        for (int i = 0; i < n && !inner; ++i) {
            AtRef c = at::child(node, i);
            if (stillFocused(c)) inner = c;
        }
        if (!inner) break;
        node = inner;
    }
    return node;
}

}  // namespace

FocusTracker::~FocusTracker() {
    if (listener_) {
        GError* error = nullptr;
        atspi_event_listener_deregister(listener_, "object:state-changed:focused", &error);
        if (error) g_error_free(error);
        error = nullptr;
        if (activation_) atspi_event_listener_deregister(listener_, "window:activate", &error);
        if (error) g_error_free(error);
        g_object_unref(listener_);
    }
}

bool FocusTracker::start() {
    if (listener_) return true;
    if (!at::init()) return false;
    AtspiEventListener* listener = atspi_event_listener_new(&FocusTracker::onEvent, this, nullptr);
    GError* error = nullptr;
    const bool ok = atspi_event_listener_register(listener, "object:state-changed:focused", &error);
    if (error) g_error_free(error);
    if (!ok) {
        g_object_unref(listener);
        return false;
    }
    listener_ = listener;
    return true;
}

bool FocusTracker::followActivation() {
    if (activation_) return true;
    if (!start()) return false;
    GError* error = nullptr;
    activation_ = atspi_event_listener_register(listener_, "window:activate", &error);
    if (error) g_error_free(error);
    return activation_;
}

void FocusTracker::onEvent(AtspiEvent* event, void* self) {
    static_cast<FocusTracker*>(self)->heard(event);
    // The listener owns nothing of the event: libatspi hands over a copy to free.
    g_boxed_free(ATSPI_TYPE_EVENT, event);
}

void FocusTracker::heard(AtspiEvent* event) {
    if (!event || !event->source) return;
    AtRef source = AtRef::retain(event->source);
    if (event->type && qstrcmp(event->type, "window:activate") == 0) {
        latest_ = source;
        return;
    }
    ++events_;
    const QString bus = at::busName(source);
    if (bus.isEmpty()) return;
    // Only the event's own fields are read here: a bus call from inside an event can wait on
    // an application that waits on us (for a paste, or our own windows' accessibility).
    Entry& entry = byBus_[bus];
    const bool current = entry.element && at::path(entry.element) == at::path(source);
    if (event->detail1) {
        latest_ = source;
        if (!current) {
            if (entry.element) entry.before = entry.element;
            entry.element = source;
            entry.judged = false;
        }
        entry.lastCheck.start();
    } else if (current) {
        entry.before = entry.element;
        entry.element = AtRef();
    }
}

void FocusTracker::passOverStandIn(Entry& entry) {
    if (!entry.element || entry.judged) return;
    entry.judged = true;
    if (!standIn(entry.element)) return;
    entry.element = stillFocused(entry.before) ? entry.before : AtRef();
    entry.before = AtRef();
    if (entry.element) entry.lastCheck.start();
}

AtRef FocusTracker::focused(const AtRef& application) {
    const QString bus = at::busName(application);
    if (bus.isEmpty()) return {};
    Entry& entry = byBus_[bus];
    passOverStandIn(entry);
    if (entry.element) {
        if (entry.lastCheck.isValid() && entry.lastCheck.elapsed() < kCheckIntervalMs)
            return entry.element;
        if (stillFocused(entry.element)) {
            entry.lastCheck.start();
            return entry.element;
        }
        entry.element = AtRef();
    }
    if (entry.lastSearch.isValid() && entry.lastSearch.elapsed() < kSearchIntervalMs) return {};
    entry.lastSearch.start();
    entry.element = search(application);
    entry.judged = true;
    if (entry.element) entry.lastCheck.start();
    return entry.element;
}

AtRef FocusTracker::search(const AtRef& application) {
    // The active window first: that is where the keyboard focus lives.
    std::vector<AtRef> stack;
    const int windows = at::childCount(application).value_or(0);
    for (int i = 0; i < windows && i < kChildrenLimit; ++i) {
        AtRef w = at::child(application, i);
        const auto s = at::states(w);
        if (s && s->active)
            stack.insert(stack.end(), w);
        else if (w)
            stack.insert(stack.begin(), w);
    }
    // Qt marks every widget whose focus proxy has the focus as focused too (KTextEditor's view,
    // its status bar and the bar's buttons): a focused element that is no text box may stand
    // for one further on, so the walk goes on, and ends on it only when none turns up.
    AtRef firstFocused;
    int budget = kSearchBudget;
    while (!stack.empty() && budget-- > 0) {
        AtRef node = stack.back();
        stack.pop_back();
        const auto s = at::states(node);
        if (!s || s->defunct) continue;
        if (s->focused && !standIn(node)) {
            if (s->editable && !s->readOnly && at::hasText(node)) return node;
            if (!firstFocused) firstFocused = innermostFocused(node);
        }
        const int n = std::min(at::childCount(node).value_or(0), kChildrenLimit);
        for (int i = n - 1; i >= 0; --i) {
            if (AtRef c = at::child(node, i)) stack.push_back(c);
        }
    }
    return firstFocused;
}

}  // namespace linuxdesk
