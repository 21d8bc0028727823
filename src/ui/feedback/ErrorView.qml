import QtQuick

//! What stands in place of content that could not be loaded, with a button to try again.
LazyView {
    id: control

    property url iconSource: "qrc:/assets/error_view_icon.png"
    property string text: qsTr("页面加载失败，请检查网络后重试")
    //! What happened, in one line; empty: it is not said.
    property string reason
    //! Empty: no button.
    property string buttonText: qsTr("重新加载")

    signal retry

    file: "ErrorPage.qml"
    values: ({ errorView: control })
    wanted: visible
}
