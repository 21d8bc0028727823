#include "upload/picker/ImagePickerSettings.h"

#include "ui/theme/HexColor.h"

void ImagePickerSettings::setThemeColor(const QString &hexText)
{
    const QColor color = colorWithHexString(hexText);
    if (color.alpha() == 0)
        return;
    iconThemeColor = color;
    navigationBarColor = color;
    okButtonNormalColor = color;
    okButtonDisabledColor = color;
}

QColor ImagePickerSettings::textColorOn(const QColor &background) const
{
    constexpr double brightest = 0.75;
    const double brightness
        = 0.299 * background.redF() + 0.587 * background.greenF() + 0.114 * background.blueF();
    return brightness > brightest ? Qt::black : Qt::white;
}
