#pragma once

/// A point, a size, and a rectangle without its right and bottom edges.
struct POINT {
    long x, y;
};
struct SIZE {
    long cx, cy;
};
struct RECT {
    long left, top, right, bottom;
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
