// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vellory {

/// What a pointer does to the pages of the grid: it drags them aside, and at their edge it turns
/// them for the tile it carries. Distances are in device-independent pixels, positive to the right;
/// positions are in pages, with fractions while one page slides over another.
class PageDrag {
  public:
    struct Pages {
        int current = 0;
        int count = 1;
        double width = 0; ///< of one page
        bool rightToLeft = false;
    };

    /// A carried tile this close to the left or right of the page turns it.
    static constexpr double edgeZone = 48;

    explicit PageDrag(const Pages& pages) : pages_(pages) {}

    /// Whether a drag that sets out like this means the pages: there are others, and it goes
    /// sideways rather than up or down.
    bool beginsWith(double dx, double dy) const;

    /// Where the pages are once the pointer has travelled so far. Past the first and the last they
    /// follow ever less, and by a third of a page at most.
    double position(double travelled) const;

    /// How the pages come to rest.
    struct Rest {
        int page = 0;     ///< the one they settle on
        double speed = 0; ///< with which they set out for it, in pages a second
    };
    /// `velocity` in pixels a second.
    Rest letGo(double travelled, double velocity) const;

    /// How many pages on (1) or back (-1) a tile asks for that is held `x` from the page's left; 0
    /// away from both edges.
    int turnAt(double x) const;

  private:
    /// 1 where a move to the right leads on, -1 where it leads back.
    double onwards() const { return pages_.rightToLeft ? 1 : -1; }

    Pages pages_;
};

} // namespace vellory
