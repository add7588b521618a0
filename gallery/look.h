// The gallery's own look: a quiet light window around the library's controls.
#pragma once

class QApplication;

namespace gallery {

void applyLook(QApplication& application);

}  // namespace gallery
