#include "ui/ViewController.h"

#include "ui/NavigationController.h"

ViewController::ViewController(QObject *parent)
    : QObject(parent)
{
}

ViewController::~ViewController() = default;

NavigationController *ViewController::navigationController() const
{
    return m_navigationController;
}

void ViewController::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    Q_EMIT titleChanged();
}
