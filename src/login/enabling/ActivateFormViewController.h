#pragma once

#include "login/enabling/EnablingStepViewController.h"

//! The first step of enabling an account: its holder says who they are, by what the school knows
//! them by and by their identity card.
class ActivateFormViewController : public EnablingStepViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The base of the first step's controllers.")
    Q_PROPERTY(QString holder READ holder WRITE setHolder NOTIFY fieldsChanged)
    Q_PROPERTY(QString cartNo READ cartNo WRITE setCartNo NOTIFY fieldsChanged)
    Q_PROPERTY(QString holderPlaceholder READ holderPlaceholder CONSTANT)
    Q_PROPERTY(bool activateEnabled READ isActivateEnabled NOTIFY fieldsChanged)

public:
    //! What the school knows the holder by.
    QString holder() const { return m_holder; }
    void setHolder(const QString &holder);
    //! The number of the identity card.
    QString cartNo() const { return m_cartNo; }
    void setCartNo(const QString &cartNo);
    bool isActivateEnabled() const { return !m_holder.isEmpty() && !m_cartNo.isEmpty(); }

    virtual QString holderPlaceholder() const = 0;

    //! Asks the platform for the account, and opens the second step with it.
    Q_INVOKABLE void activate();

Q_SIGNALS:
    void fieldsChanged();

protected:
    explicit ActivateFormViewController(const LoginEnvironment &environment);

    //! What is said where the holder is missing.
    virtual QString missingHolder() const = 0;
    virtual void verify(
        const QString &holder, const QString &cartNo, const ResponseCallback &response)
        = 0;

private:
    void verified(const QJsonValue &data);

    QString m_holder;
    QString m_cartNo;
};
