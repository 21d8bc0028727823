#include "ui/navigation/ViewController.h"

ViewController::ViewController(QObject *parent)
    : QObject(parent)
{
}

ViewController::~ViewController() = default;

void ViewController::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    Q_EMIT titleChanged();
}
