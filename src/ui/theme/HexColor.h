#pragma once

#include <QColor>
#include <QString>

//! The colour a page or a server names: "#3dd187", "3dd187", "fff" or "ff3dd187" (alpha first).
//! Blanks around it do not matter. Anything else is transparent.
QColor colorWithHexString(const QString &text);
