#pragma once

#include "ui/navigation/PresentedScreen.h"

#include <QAbstractListModel>

#include <memory>
#include <vector>

//! The screens of one host from the lowest to the topmost, as a model with the one role `screen`.
//! A row that stays keeps its view, whatever comes and goes around it.
class ScreenStack : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Stacks are made by the navigator.")

public:
    explicit ScreenStack(QObject *parent = nullptr);
    ~ScreenStack() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    //! Adds a hidden screen; its view is made at once. It goes by itself when its controller dies.
    PresentedScreen *insert(int row, std::unique_ptr<PresentedScreen> screen);
    void remove(PresentedScreen *screen);
    //! For the end of the host, when no view is left: the screens from that row on go at once, the
    //! topmost first, and with them their controllers that nobody else owns.
    void end(int firstRow);

    int count() const { return int(m_screens.size()); }
    PresentedScreen *at(int row) const { return m_screens[size_t(row)].get(); }
    int rowOf(const PresentedScreen *screen) const;
    PresentedScreen *find(const QString &name, const ViewController *controller) const;

Q_SIGNALS:
    //! The screen has left the model and is deleted when control returns to the event loop.
    void removed(PresentedScreen *screen, int formerRow);

private:
    enum Role { ScreenRole = Qt::UserRole };

    std::vector<std::unique_ptr<PresentedScreen>> m_screens;
};
