#include "platform/linux/atspi/WindowMapping.h"

#include <algorithm>
#include <cmath>
#include <deque>

#include "platform/linux/atspi/Atspi.h"

namespace linuxdesk {

namespace {

// Windows move and resize; a moment is enough to serve the reads of one bubble.
constexpr int kFramesKeepMs = 1500;
constexpr size_t kMaxWindowDepth = 40;
constexpr int kMaxWindows = 32;
// The embedded content's box is looked for this far below the window, among boxes this big.
constexpr int kSearchDepth = 4;
constexpr int kSearchChildren = 16;
constexpr double kSearchMinSide = 64;

using platform::Rect;

bool sameSize(const Rect& a, const Rect& b) {
    return std::abs(a.width - b.width) <= 1 && std::abs(a.height - b.height) <= 1;
}

bool sameObject(const AtRef& a, const AtRef& b) {
    return a && b && at::busName(a) == at::busName(b) && at::path(a) == at::path(b);
}

bool usable(const std::optional<Rect>& r) {
    return r && r->width >= 1 && r->height >= 1;
}

// The box in window's tree with the size of target's but elsewhere: where the content that
// reports target really is. Absent when the tree has no such box.
std::optional<Rect> sameSizedBox(const AtRef& window, const AtRef& target, const Rect& reported) {
    std::deque<std::pair<AtRef, int>> queue{{window, 0}};
    while (!queue.empty()) {
        auto [node, depth] = queue.front();
        queue.pop_front();
        if (depth >= kSearchDepth) continue;
        const int count = std::min(at::childCount(node).value_or(0), kSearchChildren);
        for (int i = 0; i < count; ++i) {
            AtRef c = at::child(node, i);
            if (!c || sameObject(c, target)) continue;
            const auto r = at::extents(c);
            if (!usable(r) || r->width < kSearchMinSide || r->height < kSearchMinSide) continue;
            if (sameSize(*r, reported) && (r->x != reported.x || r->y != reported.y)) return r;
            queue.emplace_back(c, depth + 1);
        }
    }
    return std::nullopt;
}

// A window with client-side decorations keeps a margin for shadows and resize handles around
// the frame it draws; without a window manager that asks for it, the margin is the same on
// every side. The client shrunk by such a margin to the reported frame's shape, if it can be.
std::optional<Rect> centredFrame(const Rect& client, const Rect& reported) {
    for (double scale : {1.0, 2.0, 3.0}) {
        const double ex = client.width - reported.width * scale;
        const double ey = client.height - reported.height * scale;
        if (ex < 0 || ey < 0 || std::abs(ex - ey) > 1 || ex > 128 * scale) continue;
        return Rect{client.x + std::floor(ex / 2), client.y + std::floor(ey / 2),
                    reported.width * scale, reported.height * scale};
    }
    return std::nullopt;
}

// Chromium on a scaled screen reports its window in its own units but its pages in device
// pixels, already true: a page as wide as the window scaled up is one of those.
bool pageInDevicePixels(const AtRef& app,
                        const std::vector<std::pair<AtRef, std::optional<Rect>>>& chain,
                        const Rect& window, double scale) {
    if (at::toolkit(app).value_or(QString()) != QLatin1String("Chromium")) return false;
    for (const auto& [node, box] : chain) {
        if (at::role(node) != ATSPI_ROLE_DOCUMENT_WEB) continue;
        return usable(box) && box->width > window.width * (1 + scale) / 2;
    }
    return false;
}

}  // namespace

Rect ReportedToScreen::apply(const Rect& r) const {
    return {(r.x + shiftX) * scale + offsetX, (r.y + shiftY) * scale + offsetY, r.width * scale,
            r.height * scale};
}

bool ReportedToScreen::identity() const {
    return shiftX == 0 && shiftY == 0 && scale == 1 && offsetX == 0 && offsetY == 0;
}

std::optional<ReportedToScreen> fitFrame(const Rect& reported,
                                         const std::vector<Rect>& candidates) {
    if (reported.width < 1 || reported.height < 1) return std::nullopt;
    for (const Rect& truth : candidates) {
        double scale = truth.width / reported.width;
        if (scale < 0.5 || scale > 4) continue;
        // Scale factors come in quarter steps; a frame rounded to whole pixels is off a little.
        const double stepped = std::round(scale * 4) / 4;
        if (std::abs(reported.width * stepped - truth.width) <= 1 + stepped) scale = stepped;
        if (std::abs(reported.height * scale - truth.height) > 1 + scale) continue;
        ReportedToScreen map;
        map.scale = scale;
        map.offsetX = truth.x - reported.x * scale;
        map.offsetY = truth.y - reported.y * scale;
        // Rounding in a scaled application's own units: not a displacement.
        if (std::abs(map.offsetX) <= scale) map.offsetX = 0;
        if (std::abs(map.offsetY) <= scale) map.offsetY = 0;
        return map;
    }
    return std::nullopt;
}

ReportedToScreen WindowMapping::of(const AtRef& element) {
    const QString key = at::key(element);
    if (auto it = known_.find(key); it != known_.end() && it->second.age.elapsed() < kFramesKeepMs)
        return it->second.map;
    if (known_.size() > 64) known_.clear();
    Known& known = known_[key];
    known.map = measure(element);
    known.age.start();
    return known.map;
}

ReportedToScreen WindowMapping::measure(const AtRef& element) {
    ReportedToScreen map;
    // The chain above the element up to its top-level, the child of the application, with
    // what each reports for itself.
    std::vector<std::pair<AtRef, std::optional<Rect>>> chain;  // lowest first
    AtRef app;
    for (AtRef a = at::parent(element); a && chain.size() < kMaxWindowDepth; a = at::parent(a)) {
        if (at::role(a) == ATSPI_ROLE_APPLICATION) {
            app = a;
            break;
        }
        chain.emplace_back(a, at::extents(a));
    }
    // LibreOffice's own top-level may have no parent: its application is found by bus name.
    if (!app) app = at::application(element);
    // A text box that is a window of its own (a Qt widget shown alone) is its own top-level.
    if (app && chain.empty()) chain.emplace_back(element, at::extents(element));
    if (!app) return map;
    const AtRef& top = chain.back().first;

    // Where window coordinates start, for toolkits that only answer in those.
    const auto topWindow = at::extents(top, at::Coords::Window);
    if (chain.back().second && topWindow) {
        map.windowX = chain.back().second->x - topWindow->x;
        map.windowY = chain.back().second->y - topWindow->y;
    }

    // The application's window holding the element: the top-level itself when the application
    // lists it, else the active one.
    AtRef window;
    const int count = std::min(at::childCount(app).value_or(0), kMaxWindows);
    for (int i = 0; i < count && !window; ++i) {
        AtRef w = at::child(app, i);
        if (sameObject(w, top)) window = w;
    }
    const bool listed = bool(window);
    for (int i = 0; i < count && !window; ++i) {
        AtRef w = at::child(app, i);
        const auto s = at::states(w);
        if (s && s->active) window = w;
    }
    if (!window) return map;

    const auto reported = at::extents(window);
    const auto pid = at::processId(app);
    if (!usable(reported) || !pid) return map;
    for (auto& [client, candidates] : frames_.of(*pid)) {
        if (const auto centred = centredFrame(client, *reported)) candidates.push_back(*centred);
        if (const auto fit = fitFrame(*reported, candidates)) {
            map.scale = fit->scale;
            map.offsetX = fit->offsetX;
            map.offsetY = fit->offsetY;
            break;
        }
    }
    if (map.scale != 1 && pageInDevicePixels(app, chain, *reported, map.scale)) return {};

    // Content grafted into a toolkit's window (LibreOffice's under the menu bar GTK draws)
    // names a parent that does not list it, and may place itself as though it filled the
    // window. The box of its size in the window's own tree is where it really is.
    // LibreOffice 25 lists its content where it is in the tree, yet places it the same way: the
    // content then has exactly its holder's size but not its place, and the holder's is true.
    std::optional<std::pair<AtRef, AtRef>> graft;  // (content, the window holding it)
    if (!listed) graft.emplace(top, window);
    for (size_t i = chain.size() - 1; i-- > 0 && !graft;) {
        const AtRef& parent = chain[i + 1].first;
        const auto index = at::indexInParent(chain[i].first);
        if (index && !sameObject(at::child(parent, *index), chain[i].first))
            graft.emplace(chain[i].first, parent);
        const auto& box = chain[i].second;
        const auto& holder = chain[i + 1].second;
        if (!graft && usable(box) && usable(holder) && sameSize(*box, *holder) &&
            (box->x != holder->x || box->y != holder->y)) {
            map.shiftX = holder->x - box->x;
            map.shiftY = holder->y - box->y;
            return map;
        }
        if (i + 3 < chain.size()) break;  // grafts sit just below the top-level
    }
    if (graft) {
        const auto r = at::extents(graft->first);
        const auto box = usable(r) ? sameSizedBox(graft->second, graft->first, *r) : std::nullopt;
        if (box) {
            map.shiftX = box->x - r->x;
            map.shiftY = box->y - r->y;
        }
    }
    return map;
}

}  // namespace linuxdesk
