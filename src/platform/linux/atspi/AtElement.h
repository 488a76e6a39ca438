#pragma once
// The backend's element handle: one AT-SPI object, named by its application's bus name and
// its object path (what makes two handles the same element).

#include <QString>

#include "platform/Ax.h"
#include "platform/linux/atspi/AtRef.h"

namespace linuxdesk {

class AtElement : public platform::ElementHandle {
public:
    explicit AtElement(AtRef ref);
    const AtRef& ref() const { return ref_; }
    const QString& bus() const { return bus_; }
    const QString& path() const { return path_; }

    static platform::Element wrap(AtRef ref);
    // The object behind a handle of this backend; null for null or foreign handles.
    static AtRef unwrap(const platform::Element& element);

private:
    AtRef ref_;
    QString bus_, path_;
};

}  // namespace linuxdesk
