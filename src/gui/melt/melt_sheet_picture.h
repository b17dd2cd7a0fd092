#pragma once
// The small picture of a melt sheet: the icon of the melt maker's sheet button and the
// picture on the sheet form that fills in the parent's figures.
#include <QPixmap>

namespace ostrel::gui {

QPixmap MeltSheetPicture(int width, int height);

}  // namespace ostrel::gui
