#include "platform/linux/atspi/AtElement.h"

#include "platform/linux/atspi/Atspi.h"

namespace linuxdesk {

AtElement::AtElement(AtRef ref) : ref_(std::move(ref)) {
    bus_ = at::busName(ref_);
    path_ = at::path(ref_);
}

platform::Element AtElement::wrap(AtRef ref) {
    if (!ref) return nullptr;
    return std::make_shared<AtElement>(std::move(ref));
}

AtRef AtElement::unwrap(const platform::Element& element) {
    auto* mine = dynamic_cast<const AtElement*>(element.get());
    return mine ? mine->ref() : AtRef();
}

}  // namespace linuxdesk
