#pragma once

#include "login/region/AddressModel.h"
#include "login/screen/SchoolLoginViewController.h"

class PickerViewController;

//! The older login screen: province, city and school are picked from the region tree, and an
//! account that was never used can be enabled from here.
class LoginViewController : public SchoolLoginViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(QString provincesText READ provincesText NOTIFY cityChanged)
    Q_PROPERTY(QString cityText READ cityText NOTIFY cityChanged)
    Q_PROPERTY(bool cityChosen READ isCityChosen NOTIFY cityChanged)
    Q_PROPERTY(bool loginEnabled READ isLoginEnabled NOTIFY loginEnabledChanged)

public:
    enum class Field { Provinces, City, School, Account };
    Q_ENUM(Field)

    explicit LoginViewController(const LoginEnvironment &environment);

    QString screenName() const override { return QStringLiteral("RegionLoginScreen"); }

    //! What the fields show: the choice, or what is to be chosen.
    QString provincesText() const;
    QString cityText() const;
    bool isCityChosen() const { return !m_city.isEmpty(); }
    bool isLoginEnabled() { return loginViewModel().isLoginEnabled(); }

    // The screen's touches.
    //! A field is touched: the region fields open their pickers and are not written in. Whether the
    //! field may be written in; says so where something else comes first.
    Q_INVOKABLE bool textFieldShouldBeginEditing(Field field);
    //! Opens the first step of enabling an account.
    Q_INVOKABLE void activate();

Q_SIGNALS:
    void cityChanged();
    void loginEnabledChanged();

private:
    void configLoginInfo() override;
    void takeUp(const AskedSchool &school) override;
    QString tested(const QString &typed) const override;

    void getSchoolData(const std::function<void()> &then);
    void setCity();
    void didChooseCity(int province, int city);
    void showCity(const QString &provinces, const QString &city);
    QList<DistrictModel> schoolsOfCity() const;
    void setSchool();
    void didChooseSchool(const DistrictModel &district);

    QList<AddressModel> m_totalDataArr; //!< empty until it was first needed
    QList<DistrictModel> m_dataArr; //!< the schools of the chosen city
    QPointer<PickerViewController> m_picker;
    QString m_provinces;
    QString m_city;
    ProgressWork m_request;
};
