#pragma once

#include <QObject>
#include <qqmlregistration.h>

//! What the system's bars, notches and rounded corners take from each edge of the window, in
//! points. Zero on desktops; a phone's shell sets VANT_SAFE_AREA="top,bottom[,left,right]". Owned
//! by Shell.
class SafeArea : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The safe area is made in C++.")
    Q_PROPERTY(double top MEMBER m_top NOTIFY changed)
    Q_PROPERTY(double bottom MEMBER m_bottom NOTIFY changed)
    Q_PROPERTY(double left MEMBER m_left NOTIFY changed)
    Q_PROPERTY(double right MEMBER m_right NOTIFY changed)

public:
    explicit SafeArea(QObject *parent = nullptr);

    //! Reads "top,bottom[,left,right]". A text with anything but numbers from 0 to 200 in it
    //! changes nothing, and is logged.
    bool setInsets(const QString &text);

    double top() const { return m_top; }
    double bottom() const { return m_bottom; }
    double left() const { return m_left; }
    double right() const { return m_right; }

Q_SIGNALS:
    void changed();

private:
    double m_top = 0;
    double m_bottom = 0;
    double m_left = 0;
    double m_right = 0;
};
