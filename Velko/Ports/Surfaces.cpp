#include "Velko/Ports/Surfaces.h"

namespace velko {

OpenSurface::~OpenSurface() {
    opening_.reset();
    surface_.close();
}

void OpenSurface::open(Surface::Opening opening, Subscription changes) {
    if (opening.title.empty()) {
        opening.title = Surfaces::traitsOf(kind_).title;
    }
    place_ = opening.place;
    opening_ = std::make_shared<Subscription>(std::move(changes));
    if (opening.closed) {
        opening.closed = [this, newest = std::weak_ptr(opening_), closed = std::move(opening.closed)] {
            // By now this object may be gone, or the surface may have been opened again.
            if (!newest.expired()) {
                opening_.reset();
                closed();
            }
        };
    }
    surface_.open(std::move(opening));
}

void OpenSurface::move(const Surface::Place& to) {
    if (place_ != to) {
        place_ = to;
        surface_.move(to);
    }
}

}  // namespace velko
