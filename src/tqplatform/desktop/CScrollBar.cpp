#include "tqplatform/desktop/CScrollBar.h"

CScrollBar::~CScrollBar() = default;
