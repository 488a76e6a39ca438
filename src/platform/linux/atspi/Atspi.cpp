#include "platform/linux/atspi/Atspi.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSet>
#include <map>

#include "platform/linux/atspi/Stalls.h"

namespace linuxdesk::at {

namespace {

// A call into a hung application gives up after 0.4 s (libatspi's own limit) instead of
// D-Bus's 25 s; libatspi may wait up to twice its limit (it waits again in full when some other
// message comes just before the end), so the one wait a stopped application costs stays below a
// second; after that it is not called until it answers a ping (see Stalls). libatspi would let
// calls run longer into an application it met in the last few seconds (counted from when this
// process first asked it, not from its start), so a hung application just come to the front
// held everything for seconds: no such grace here; one still building its tree is pinged.
constexpr int kCallTimeoutMs = 400;
constexpr int kStartupTimeoutMs = 0;
constexpr int kPingTimeoutMs = 2000;
// GTK 4.8 makes the selection it is asked for but never answers; the keyboard must not wait
// the full timeout for that. An application that kept silent once is not waited for again
// (its bus name lasts as long as it runs). GTK 4.14 to 4.20 text views refuse AddSelection,
// SetSelection and SetCaretOffset at once (NotSupported; the setters come back in 4.22), and
// give character boxes only in window coordinates: the engine then selects the paragraph with
// the keyboard, and the boxes are placed from the window's own place.
constexpr int kSelectionTimeoutMs = 150;
constexpr int kSilentSelectionTimeoutMs = 1;

qint64 nowMs() {
    static QElapsedTimer clock;
    if (!clock.isValid()) clock.start();
    return clock.elapsed();
}

// The limit calls run under now; the selection's own short one tells no stopped application.
int callTimeoutMs = kCallTimeoutMs;

void setTimeouts(int callMs, int startupMs) {
    callTimeoutMs = callMs;
    atspi_set_timeout(callMs, startupMs);
}

// Whether a call (of at least the usual limit) failed at its timeout: the application did not
// answer, rather than answering with an error.
bool timedOut(const QElapsedTimer& clock) {
    return callTimeoutMs == kCallTimeoutMs && clock.elapsed() >= kCallTimeoutMs * 9 / 10;
}

// Whether a bus name is this process's own (Qt's accessibility bridge, once a window of ours
// showed): a blocking call into it waits out its whole timeout, since the answer would come
// from the very thread that waits. Asked of the bus, once a name: names are never reused. An
// application that does not answer even this is left alone (see Stalls) and counts as own.
bool ownBus(const AtRef& a, const QString& bus) {
    static std::map<QString, bool> known;
    if (const auto it = known.find(bus); it != known.end()) return it->second;
    QElapsedTimer clock;
    clock.start();
    GError* error = nullptr;
    const guint pid = atspi_accessible_get_process_id(a.get(), &error);
    if (error) {
        g_error_free(error);
        if (!timedOut(clock)) return false;
        Stalls::shared().stalled(bus, nowMs());
        return true;
    }
    return known[bus] = qint64(pid) == QCoreApplication::applicationPid();
}

void pong(DBusPendingCall* pending, void* bus) {
    DBusMessage* reply = dbus_pending_call_steal_reply(pending);
    if (reply && dbus_message_get_type(reply) == DBUS_MESSAGE_TYPE_METHOD_RETURN)
        Stalls::shared().answered(*static_cast<const QString*>(bus));
    if (reply) dbus_message_unref(reply);
    dbus_pending_call_unref(pending);
}

// Asks an application whether it answers again, without waiting: D-Bus's own Ping, which its
// bus library answers from the same loop as the accessibility calls.
void ping(const QString& bus) {
    DBusConnection* connection = atspi_get_a11y_bus();
    const QByteArray name = bus.toUtf8();
    DBusMessage* message = connection
                               ? dbus_message_new_method_call(name.constData(), "/",
                                                              "org.freedesktop.DBus.Peer", "Ping")
                               : nullptr;
    if (!message) return;
    DBusPendingCall* pending = nullptr;
    if (dbus_connection_send_with_reply(connection, message, &pending, kPingTimeoutMs) && pending)
        dbus_pending_call_set_notify(pending, &pong, new QString(bus),
                                     [](void* b) { delete static_cast<QString*>(b); });
    dbus_message_unref(message);
}

// Runs one call into a's application with an error slot; an error (always freed) turns the
// answer into absent, and so does an application that stopped answering, which is not called
// at all until it answers a ping.
template <typename F>
auto guarded(const AtRef& a, F&& call)
    -> std::optional<decltype(call(static_cast<GError**>(nullptr)))> {
    const QString bus = busName(a);
    Stalls& stalls = Stalls::shared();
    if (!bus.isEmpty() && (stalls.skip(bus, nowMs()) || ownBus(a, bus))) return std::nullopt;
    QElapsedTimer clock;
    clock.start();
    GError* error = nullptr;
    auto result = call(&error);
    const bool failed = error != nullptr;
    if (error) g_error_free(error);
    if (failed && !bus.isEmpty() && timedOut(clock)) stalls.stalled(bus, nowMs());
    if (failed) return std::nullopt;
    return result;
}

std::optional<QString> takeString(gchar* s) {
    if (!s) return std::nullopt;
    QString out = QString::fromUtf8(s);
    g_free(s);
    return out;
}

template <typename F>
std::optional<QString> stringCall(const AtRef& a, F&& call) {
    auto s = guarded(a, [&](GError** e) {
        gchar* got = call(e);
        if (*e) {
            g_free(got);  // a string beside an error is not the answer
            got = nullptr;
        }
        return got;
    });
    return s ? takeString(*s) : std::nullopt;
}

// Interface accessors return a new reference, or null when the object lacks the interface.
template <typename Iface>
struct IfaceRef {
    Iface* p;
    ~IfaceRef() {
        if (p) g_object_unref(p);
    }
};

IfaceRef<AtspiText> textOf(const AtRef& a) {
    return {a ? atspi_accessible_get_text_iface(a.get()) : nullptr};
}

std::optional<platform::Rect> takeRect(AtspiRect* r) {
    if (!r) return std::nullopt;
    platform::Rect out{double(r->x), double(r->y), double(r->width), double(r->height)};
    g_free(r);
    return out;
}

AtspiCoordType coordType(Coords coords) {
    return coords == Coords::Screen ? ATSPI_COORD_TYPE_SCREEN : ATSPI_COORD_TYPE_WINDOW;
}

}  // namespace

bool init() {
    static int status = -1;
    if (status == -1) {
        // 0: connected; 1: already connected by someone else in this process.
        status = atspi_init();
        setTimeouts(kCallTimeoutMs, kStartupTimeoutMs);
        Stalls::shared().setPing(&ping);
    }
    return status == 0 || status == 1;
}

QString busName(const AtRef& a) {
    if (!a) return {};
    auto* object = reinterpret_cast<AtspiObject*>(a.get());
    return object->app && object->app->bus_name ? QString::fromUtf8(object->app->bus_name)
                                                : QString();
}

QString path(const AtRef& a) {
    if (!a) return {};
    auto* object = reinterpret_cast<AtspiObject*>(a.get());
    return object->path ? QString::fromUtf8(object->path) : QString();
}

QString key(const AtRef& a) {
    return busName(a) + QLatin1Char('|') + path(a);
}

std::optional<AtspiRole> role(const AtRef& a) {
    if (!a) return std::nullopt;
    auto r = guarded(a, [&](GError** e) { return atspi_accessible_get_role(a.get(), e); });
    if (!r || *r == ATSPI_ROLE_INVALID) return std::nullopt;
    return r;
}

std::optional<States> states(const AtRef& a) {
    if (!a) return std::nullopt;
    // The state set comes with no error slot: a missing one is the failure.
    auto got = guarded(a, [&](GError** e) {
        AtspiStateSet* set = atspi_accessible_get_state_set(a.get());
        if (!set) g_set_error_literal(e, g_quark_from_static_string("glimmo"), 0, "no state set");
        return set;
    });
    AtspiStateSet* set = got ? *got : nullptr;
    if (!set) return std::nullopt;
    States s;
    s.focused = atspi_state_set_contains(set, ATSPI_STATE_FOCUSED);
    s.focusable = atspi_state_set_contains(set, ATSPI_STATE_FOCUSABLE);
    s.editable = atspi_state_set_contains(set, ATSPI_STATE_EDITABLE);
    s.readOnly = atspi_state_set_contains(set, ATSPI_STATE_READ_ONLY);
    s.multiLine = atspi_state_set_contains(set, ATSPI_STATE_MULTI_LINE);
    s.singleLine = atspi_state_set_contains(set, ATSPI_STATE_SINGLE_LINE);
    s.active = atspi_state_set_contains(set, ATSPI_STATE_ACTIVE);
    s.showing = atspi_state_set_contains(set, ATSPI_STATE_SHOWING);
    s.defunct = atspi_state_set_contains(set, ATSPI_STATE_DEFUNCT);
    g_object_unref(set);
    return s;
}

std::optional<QString> name(const AtRef& a) {
    if (!a) return std::nullopt;
    return stringCall(a, [&](GError** e) { return atspi_accessible_get_name(a.get(), e); });
}

std::optional<QString> description(const AtRef& a) {
    if (!a) return std::nullopt;
    return stringCall(a, [&](GError** e) { return atspi_accessible_get_description(a.get(), e); });
}

std::optional<QString> accessibleId(const AtRef& a) {
    if (!a) return std::nullopt;
    return stringCall(a,
                      [&](GError** e) { return atspi_accessible_get_accessible_id(a.get(), e); });
}

std::optional<QString> toolkit(const AtRef& a) {
    if (!a) return std::nullopt;
    return stringCall(a, [&](GError** e) { return atspi_accessible_get_toolkit_name(a.get(), e); });
}

std::optional<QString> toolkitVersion(const AtRef& a) {
    if (!a) return std::nullopt;
    return stringCall(a,
                      [&](GError** e) { return atspi_accessible_get_toolkit_version(a.get(), e); });
}

std::optional<std::map<QString, QString>> attributes(const AtRef& a) {
    if (!a) return std::nullopt;
    auto got = guarded(a, [&](GError** e) {
        GHashTable* table = atspi_accessible_get_attributes(a.get(), e);
        if (*e && table) {
            g_hash_table_unref(table);
            table = nullptr;
        }
        return table;
    });
    if (!got) return std::nullopt;
    GHashTable* table = *got;
    std::map<QString, QString> out;
    if (!table) return out;
    GHashTableIter it;
    gpointer key, value;
    g_hash_table_iter_init(&it, table);
    while (g_hash_table_iter_next(&it, &key, &value))
        out[QString::fromUtf8(static_cast<const char*>(key))] =
            QString::fromUtf8(static_cast<const char*>(value));
    g_hash_table_unref(table);
    return out;
}

std::optional<qint64> processId(const AtRef& a) {
    if (!a) return std::nullopt;
    auto pid = guarded(a, [&](GError** e) { return atspi_accessible_get_process_id(a.get(), e); });
    if (!pid || *pid == 0) return std::nullopt;
    return qint64(*pid);
}

AtRef parent(const AtRef& a) {
    if (!a) return {};
    auto p = guarded(a, [&](GError** e) { return atspi_accessible_get_parent(a.get(), e); });
    return p ? AtRef::adopt(*p) : AtRef();
}

AtRef application(const AtRef& a) {
    if (!a) return {};
    auto p = guarded(a, [&](GError** e) { return atspi_accessible_get_application(a.get(), e); });
    return p ? AtRef::adopt(*p) : AtRef();
}

std::optional<int> childCount(const AtRef& a) {
    if (!a) return std::nullopt;
    return guarded(a, [&](GError** e) { return atspi_accessible_get_child_count(a.get(), e); });
}

AtRef child(const AtRef& a, int index) {
    if (!a) return {};
    auto c = guarded(
        a, [&](GError** e) { return atspi_accessible_get_child_at_index(a.get(), index, e); });
    return c ? AtRef::adopt(*c) : AtRef();
}

std::optional<int> indexInParent(const AtRef& a) {
    if (!a) return std::nullopt;
    auto i =
        guarded(a, [&](GError** e) { return atspi_accessible_get_index_in_parent(a.get(), e); });
    if (!i || *i < 0) return std::nullopt;
    return i;
}

AtRef desktop() {
    return AtRef::adopt(atspi_get_desktop(0));
}

bool hasText(const AtRef& a) {
    return textOf(a).p != nullptr;
}

std::optional<QString> text(const AtRef& a) {
    auto t = textOf(a);
    if (!t.p) return std::nullopt;
    auto s = stringCall(a, [&](GError** e) { return atspi_text_get_text(t.p, 0, -1, e); });
    // Gecko counts offsets in UTF-16 units but reports characters, so it follows each
    // character outside the Basic Multilingual Plane with a U+FEFF to keep the count: the
    // text without them is the text the user wrote, and its UTF-16 offsets are Gecko's.
    if (s && s->contains(QChar(0xFEFF))) {
        for (qsizetype i = s->size() - 1; i >= 2; --i)
            if (s->at(i) == QChar(0xFEFF) && s->at(i - 1).isLowSurrogate()) s->remove(i, 1);
    }
    return s;
}

std::optional<int> caret(const AtRef& a) {
    auto t = textOf(a);
    if (!t.p) return std::nullopt;
    auto c = guarded(a, [&](GError** e) { return atspi_text_get_caret_offset(t.p, e); });
    if (!c || *c < 0) return std::nullopt;
    return c;
}

std::optional<std::pair<int, int>> selection(const AtRef& a) {
    auto t = textOf(a);
    if (!t.p) return std::nullopt;
    auto n = guarded(a, [&](GError** e) { return atspi_text_get_n_selections(t.p, e); });
    if (!n || *n <= 0) return std::nullopt;
    auto range = guarded(a, [&](GError** e) { return atspi_text_get_selection(t.p, 0, e); });
    if (!range || !*range) return std::nullopt;
    std::pair<int, int> out{(*range)->start_offset, (*range)->end_offset};
    g_free(*range);
    if (out.first > out.second) std::swap(out.first, out.second);
    if (out.first == out.second || out.first < 0) return std::nullopt;
    return out;
}

bool hasEditableText(const AtRef& a) {
    if (!a) return false;
    AtspiEditableText* e = atspi_accessible_get_editable_text_iface(a.get());
    if (e) g_object_unref(e);
    return e != nullptr;
}

bool deleteText(const AtRef& a, int start, int end) {
    IfaceRef<AtspiEditableText> t{a ? atspi_accessible_get_editable_text_iface(a.get()) : nullptr};
    if (!t.p) return false;
    auto ok =
        guarded(a, [&](GError** e) { return atspi_editable_text_delete_text(t.p, start, end, e); });
    return ok && *ok;
}

bool insertText(const AtRef& a, int position, const QString& text, int length) {
    IfaceRef<AtspiEditableText> t{a ? atspi_accessible_get_editable_text_iface(a.get()) : nullptr};
    if (!t.p) return false;
    const QByteArray utf8 = text.toUtf8();
    auto ok = guarded(a, [&](GError** e) {
        return atspi_editable_text_insert_text(t.p, position, utf8.constData(), length, e);
    });
    return ok && *ok;
}

bool setCaret(const AtRef& a, int offset) {
    auto t = textOf(a);
    if (!t.p) return false;
    auto ok = guarded(a, [&](GError** e) { return atspi_text_set_caret_offset(t.p, offset, e); });
    return ok && *ok;
}

bool setSelection(const AtRef& a, int start, int end) {
    auto t = textOf(a);
    if (!t.p) return false;
    auto n = guarded(a, [&](GError** e) { return atspi_text_get_n_selections(t.p, e); });
    static QSet<QString> silent;
    const QString bus = busName(a);
    const int timeout = silent.contains(bus) ? kSilentSelectionTimeoutMs : kSelectionTimeoutMs;
    // No startup allowance here: a selection needs no tree to be built.
    setTimeouts(timeout, 0);
    QElapsedTimer clock;
    clock.start();
    std::optional<gboolean> ok;
    if (n && *n > 0)
        ok =
            guarded(a, [&](GError** e) { return atspi_text_set_selection(t.p, 0, start, end, e); });
    else
        ok = guarded(a, [&](GError** e) { return atspi_text_add_selection(t.p, start, end, e); });
    const bool unanswered = !ok && clock.elapsed() >= timeout;
    setTimeouts(kCallTimeoutMs, kStartupTimeoutMs);
    if (unanswered) {
        silent.insert(bus);
        // Whether it took the selection shows in the selection read back: the application
        // handles that question after this request.
        return true;
    }
    return ok && *ok;
}

std::optional<QString> textAttribute(const AtRef& a, int offset, const char* name) {
    auto t = textOf(a);
    if (!t.p) return std::nullopt;
    // The run with the defaults: WebKit answers no single attribute, and states some (as
    // "editable") only among the defaults.
    gint start = 0, end = 0;
    auto table = guarded(a, [&](GError** e) {
        return atspi_text_get_attribute_run(t.p, offset, TRUE, &start, &end, e);
    });
    if (!table || !*table) return std::nullopt;
    const auto* value = static_cast<const gchar*>(g_hash_table_lookup(*table, name));
    std::optional<QString> out;
    if (value && *value) out = QString::fromUtf8(value);
    g_hash_table_unref(*table);
    return out;
}

std::optional<platform::Rect> rangeExtents(const AtRef& a, int start, int end, Coords coords) {
    auto t = textOf(a);
    if (!t.p) return std::nullopt;
    auto r = guarded(a, [&](GError** e) {
        return atspi_text_get_range_extents(t.p, start, end, coordType(coords), e);
    });
    return r ? takeRect(*r) : std::nullopt;
}

std::optional<platform::Rect> characterExtents(const AtRef& a, int offset, Coords coords) {
    auto t = textOf(a);
    if (!t.p) return std::nullopt;
    auto r = guarded(a, [&](GError** e) {
        return atspi_text_get_character_extents(t.p, offset, coordType(coords), e);
    });
    return r ? takeRect(*r) : std::nullopt;
}

std::optional<platform::Rect> extents(const AtRef& a, Coords coords) {
    if (!a) return std::nullopt;
    IfaceRef<AtspiComponent> c{atspi_accessible_get_component_iface(a.get())};
    if (!c.p) return std::nullopt;
    auto r = guarded(
        a, [&](GError** e) { return atspi_component_get_extents(c.p, coordType(coords), e); });
    return r ? takeRect(*r) : std::nullopt;
}

std::optional<QString> documentAttribute(const AtRef& a, const char* key) {
    if (!a) return std::nullopt;
    IfaceRef<AtspiDocument> d{atspi_accessible_get_document_iface(a.get())};
    if (!d.p) return std::nullopt;
    auto value = stringCall(a, [&](GError** e) {
        return atspi_document_get_document_attribute_value(d.p, const_cast<gchar*>(key), e);
    });
    if (value && value->isEmpty()) return std::nullopt;
    return value;
}

}  // namespace linuxdesk::at
