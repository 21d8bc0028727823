#pragma once

#include "ui/theme/HexColor.h"

#include <QColor>
#include <QMetaType>
#include <QString>

//! What the picker may be used for and how it looks.
struct ImagePickerSettings
{
    Q_GADGET
    Q_PROPERTY(int columnNumber MEMBER columnNumber CONSTANT)
    Q_PROPERTY(QColor barItemTextColor MEMBER barItemTextColor CONSTANT)
    Q_PROPERTY(QColor navigationBarColor MEMBER navigationBarColor CONSTANT)
    Q_PROPERTY(QColor iconThemeColor MEMBER iconThemeColor CONSTANT)
    Q_PROPERTY(QColor okButtonNormalColor MEMBER okButtonNormalColor CONSTANT)
    Q_PROPERTY(QColor okButtonDisabledColor MEMBER okButtonDisabledColor CONSTANT)
    Q_PROPERTY(QColor cannotSelectLayerColor MEMBER cannotSelectLayerColor CONSTANT)

public:
    enum class Media { Images, Videos };

    Media media = Media::Images;
    //! Less than 1 counts as 1: a picker in which nothing can be chosen helps nobody.
    int maxImagesCount = 1;
    int columnNumber = 4;
    //! In a picker of images; a camera must be there too.
    bool allowTakePicture = false;
    //! In a picker of videos, likewise.
    bool allowTakeVideo = false;

    QColor barItemTextColor = Qt::white;
    QColor navigationBarColor {shellColor};
    QColor iconThemeColor = navigationBarColor;
    QColor okButtonNormalColor = navigationBarColor;
    QColor okButtonDisabledColor {0xaa, 0xaa, 0xaa};
    //! Over items that can no longer be chosen.
    QColor cannotSelectLayerColor {255, 255, 255, 204};

    //! Takes over a page's colour, "#3dd187" or the like. A text that is no colour changes nothing.
    void setThemeColor(const QString &hexText);
    //! White, or black on a colour so light that white would not be read.
    Q_INVOKABLE QColor textColorOn(const QColor &background) const;

    bool operator==(const ImagePickerSettings &) const = default;
};
