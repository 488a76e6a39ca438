#pragma once
// Thin wrappers over the libatspi calls the backend makes. Each one frees its GError and
// answers absent (or false, or an empty list) on any failure: an application that is gone,
// hung past the timeout, or without the interface. Nothing here throws or logs.

#include <QString>
#include <map>
#include <optional>
#include <vector>

#include "platform/Geometry.h"
#include "platform/linux/atspi/AtRef.h"

namespace linuxdesk::at {

// Connects to the accessibility bus once per process and bounds every call to a hung
// application. False when the bus cannot be reached.
bool init();

struct States {
    bool focused = false, focusable = false, editable = false, readOnly = false;
    bool multiLine = false, singleLine = false, active = false, showing = false;
    bool defunct = false;
};

// The accessible's connection name and object path: what makes two handles the same element.
QString busName(const AtRef& a);
QString path(const AtRef& a);
// Names one element across calls and reference copies: its bus name and object path.
QString key(const AtRef& a);

std::optional<AtspiRole> role(const AtRef& a);
std::optional<States> states(const AtRef& a);
std::optional<QString> name(const AtRef& a);
std::optional<QString> description(const AtRef& a);
std::optional<QString> accessibleId(const AtRef& a);
std::optional<QString> toolkit(const AtRef& a);
std::optional<QString> toolkitVersion(const AtRef& a);
std::optional<std::map<QString, QString>> attributes(const AtRef& a);
std::optional<qint64> processId(const AtRef& a);

AtRef parent(const AtRef& a);
AtRef application(const AtRef& a);
std::optional<int> childCount(const AtRef& a);
AtRef child(const AtRef& a, int index);
std::optional<int> indexInParent(const AtRef& a);
AtRef desktop();

// Text interface. Offsets are the toolkit's own characters (see TextOffsets).
bool hasText(const AtRef& a);
std::optional<QString> text(const AtRef& a);
std::optional<int> caret(const AtRef& a);
// The first selection, when there is one that is not empty.
std::optional<std::pair<int, int>> selection(const AtRef& a);
bool setCaret(const AtRef& a, int offset);
// One text attribute of the character at offset ("editable", "weight", ...).
std::optional<QString> textAttribute(const AtRef& a, int offset, const char* name);
// Also true when the application took the request without answering (GTK 4 does): the
// caller reads the selection back to learn whether it was made.
bool setSelection(const AtRef& a, int start, int end);
// Rectangles come in screen coordinates, or relative to the element's top-level window.
enum class Coords { Screen, Window };

std::optional<platform::Rect> rangeExtents(const AtRef& a, int start, int end,
                                           Coords coords = Coords::Screen);
std::optional<platform::Rect> characterExtents(const AtRef& a, int offset,
                                               Coords coords = Coords::Screen);

// EditableText interface, in the toolkit's offsets.
bool hasEditableText(const AtRef& a);
bool deleteText(const AtRef& a, int start, int end);
// length: how the toolkit measures the text (GTK in UTF-8 bytes, Qt in UTF-16 units).
bool insertText(const AtRef& a, int position, const QString& text, int length);

// Component interface: the element's frame.
std::optional<platform::Rect> extents(const AtRef& a, Coords coords = Coords::Screen);

// Document interface.
std::optional<QString> documentAttribute(const AtRef& a, const char* key);

}  // namespace linuxdesk::at
