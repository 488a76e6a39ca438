#pragma once
// platform::Ax over AT-SPI2. Attribute names are translated here; see AxRoles for roles and
// AxText for the text attributes. Every call answers absent when the application does not.

#include <QElapsedTimer>
#include <QString>
#include <map>
#include <set>
#include <vector>

#include "platform/Ax.h"
#include "platform/linux/atspi/A11yBus.h"
#include "platform/linux/atspi/AtRef.h"
#include "platform/linux/atspi/EditableDocument.h"
#include "platform/linux/atspi/ElementCache.h"
#include "platform/linux/atspi/FocusTracker.h"
#include "platform/linux/atspi/TextEvents.h"
#include "platform/linux/atspi/TextOffsets.h"
#include "platform/linux/atspi/WindowMapping.h"

namespace linuxdesk {

class TextRun;

class AtspiAx : public platform::Ax {
public:
    bool trusted() override;
    void requestTrust() override;
    platform::Element application(qint64 pid) override;
    // The element focused in process pid's application; null when none.
    platform::Element focusedIn(qint64 pid);
    std::optional<platform::Value> attribute(const platform::Element& element,
                                             const QString& name) override;
    std::optional<platform::Value> parameterized(const platform::Element& element,
                                                 const QString& name,
                                                 const platform::Value& parameter) override;
    bool setAttribute(const platform::Element& element, const QString& name,
                      const platform::Value& value) override;
    bool same(const platform::Element& a, const platform::Element& b) override;
    std::vector<QString> restartNeeded() override;
    void onChange(std::function<void()> changed) override { events_.onChange(std::move(changed)); }

    // Connects to the accessibility bus and starts hearing focus events; true once done.
    // Called by trusted(); exposed so tests and the desktop can start it early.
    bool connect();
    const FocusTracker& focus() const { return focus_; }
    FocusTracker& focus() { return focus_; }

    // The process behind an application element (cached: bus names are never reused).
    std::optional<qint64> processOf(const AtRef& application);
    // The element's text (its AXValue); absent when it has none or does not answer.
    std::optional<QString> value(const platform::Element& element);
    // Whether the element's text can be changed through the accessibility interface.
    bool editable(const platform::Element& element);
    // Replaces a range (UTF-16 units) of an element's text by deleting it and inserting text.
    bool replace(const platform::Element& element, const platform::Range& range,
                 const QString& text);
    // A text range's place relative to the element's window, as the toolkit reports it.
    std::optional<platform::Rect> windowBounds(const platform::Element& element,
                                               const platform::Range& range);
    // The element's own box relative to its window, as the toolkit reports it.
    std::optional<platform::Rect> windowFrame(const platform::Element& element);
    // The major version of the element's toolkit, where it is GTK; absent otherwise.
    std::optional<int> gtkVersion(const platform::Element& element);

private:
    // The toolkit's name ("GTK", "Qt", "Chromium", "Gecko", ...), kept by application.
    QString toolkitOf(const AtRef& element);
    OffsetUnit unitOf(const AtRef& element);
    // The unit of the selection the element reports; only Chromium's differs from unitOf.
    OffsetUnit selectionUnitOf(const AtRef& element);
    std::optional<qint64> pidOf(const AtRef& application);
    std::optional<platform::Value> read(const AtRef& element, const QString& name);
    // The text box attributes of an editable document (see EditableDocument).
    std::optional<platform::Value> readDocument(const AtRef& element, const QString& name);
    std::optional<platform::Value> readRun(const TextRun& run, const QString& name);
    // The text a non-editable element holds itself, beside its child objects (see TextRun);
    // absent when its children carry that text already.
    std::optional<QString> heldText(const AtRef& element, const std::vector<AtRef>& children);
    AtRef focusedWindow(const AtRef& application);
    void noteEmptyTree(const AtRef& application);
    std::optional<platform::Rect> bounds(const AtRef& ref, const platform::Range& range,
                                         at::Coords coords);
    // A rectangle the application reported, on the desktop in the screens' units.
    platform::Rect onDesktop(const AtRef& element, const platform::Rect& reported);

    struct KnownApp {
        AtRef app;
        QElapsedTimer age;
    };

    A11yBus bus_;
    FocusTracker focus_;
    TextEvents events_;
    ElementCache cache_;
    EditableDocument document_{cache_};
    WindowMapping mapping_;
    std::map<qint64, KnownApp> appByPid_;
    bool connected_ = false;
    std::map<QString, qint64> pidByBus_;
    std::map<QString, QString> toolkitByBus_;
    std::set<qint64> reportedNoTree_;
    // Chromium and Electron processes seen with bare windows, with their names (maybe empty).
    std::map<qint64, QString> bare_;
};

}  // namespace linuxdesk
