#pragma once

#include "skindescription.h"

#include <QPlainTextEdit>

// The notepad's page ("X2"): plain text the user edits. Like the lists it
// keeps its text when the skin changes.
class SkinTextArea : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit SkinTextArea(QWidget *parent);

    void configure(const SkinList &list, int scale);
};
