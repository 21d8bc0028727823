#pragma once

#include "login/form/LoginEnvironment.h"
#include "login/school/SchoolListModel.h"
#include "net/catalogue/SiteConfiguration.h"
#include "ui/navigation/ViewController.h"

#include <functional>

//! The school chooser: all schools by the first letter of their reading, and a search. Presented
//! over a login screen and owned by the navigator from then on; it dismisses itself when a school
//! has been chosen.
class ChooseSchoolViewController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(SchoolListModel *schools READ schools CONSTANT)
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    Q_PROPERTY(QString failureText READ failureText NOTIFY stateChanged)

public:
    enum class State {
        Loading, //!< asking for the list, or sorting it
        Loaded,
        Failed, //!< failureText says why; the list is empty
    };
    Q_ENUM(State)
    //! Called with the chosen school, at most once.
    using SelectedCellBlock = std::function<void(const DataModel &row)>;

    ChooseSchoolViewController(
        const LoginEnvironment &environment, SelectedCellBlock selectedCellBlock);

    //! Opens a chooser in a navigation controller over what is shown.
    static ChooseSchoolViewController *present(
        const LoginEnvironment &environment, SelectedCellBlock selectedCellBlock);

    void viewDidLoad() override;

    SchoolListModel *schools() { return &m_schools; }
    State state() const { return m_state; }
    QString failureText() const { return m_failureText; }

    //! Asks for the list, for the first time or again.
    Q_INVOKABLE void load();
    Q_INVOKABLE void textDidChange(const QString &searchText);
    Q_INVOKABLE void didSelectRow(int row);

Q_SIGNALS:
    void stateChanged();

private:
    void setState(State state, const QString &failureText = {});

    LoginEnvironment m_environment;
    SelectedCellBlock m_selectedCellBlock;
    SiteConfiguration m_siteConfiguration;
    SchoolListModel m_schools;
    State m_state = State::Loading;
    QString m_failureText;
};
