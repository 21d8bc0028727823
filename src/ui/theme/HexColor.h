#pragma once

#include <QColor>
#include <QString>

//! The colour a page or a server names: "#3dd187", "3dd187", "fff" or "ff3dd187" (alpha first).
//! Blanks around it do not matter. Anything else is transparent.
QColor colorWithHexString(const QString &text);

//! The shell's own colour, of what nobody has coloured.
inline const QString shellColor = QStringLiteral("#3dd187");
//! The colour somebody names, the shell's own where the text is empty.
QColor colorOrShellColor(const QString &text);
