#pragma once

class QString;
class QWidget;

// Screen readers (through Qt's accessibility, AT-SPI on Linux) see every
// skin element for what it is: buttons named by their tool tips that can be
// pressed, labels and digit groups that read as their text, sliders with a
// value from 0 to 100, and lights that say whether they are lit. Lists, the
// notepad and text fields are Qt's own widgets and carry their tips as names.
// Installed once; SkinLoader does it.
void installSkinAccessibility();

// Tells a listening screen reader that the element's text changed, and its
// name with it when it has no tool tip to be named by.
void announceTextChange(QWidget *element, const QString &before, const QString &now);
