#pragma once

/// A point, and a size.
struct POINT {
    long x, y;
};
struct SIZE {
    long cx, cy;
};

/// The framework's objects for them.
struct CPoint : POINT {
    CPoint() : POINT{0, 0} {}
    CPoint(int fromLeft, int fromTop) : POINT{fromLeft, fromTop} {}
};
struct CSize : SIZE {
    CSize() : SIZE{0, 0} {}
    CSize(int width, int height) : SIZE{width, height} {}
    bool operator==(CSize const &other) const { return cx == other.cx && cy == other.cy; }
};
