import QtQuick
import Vant.Login
import Vant.Ui

//! The view of ChooseSchoolViewController.
ScreenFrame {
    id: screen

    required property ChooseSchoolViewController controller

    readonly property SchoolListModel schools: controller.schools
    readonly property bool loaded: controller.state === ChooseSchoolViewController.Loaded

    Connections {
        target: screen.schools
        function onShownChanged() { list.positionViewAtBeginning() }
    }

    Item {
        id: header
        width: parent.width
        height: search.height + 16
        z: 1

        SearchField {
            id: search
            anchors { verticalCenter: parent.verticalCenter; horizontalCenter: parent.horizontalCenter }
            width: parent.width - 24
            placeholderText: qsTr("请输入学校首字母或名称")
            onTextChanged: screen.controller.textDidChange(text)
        }
    }

    ListView {
        id: list
        anchors { top: header.bottom; left: parent.left; right: parent.right; bottom: parent.bottom }
        clip: true
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        model: screen.schools
        delegate: SchoolCell {
            width: ListView.view.width
            onClicked: screen.controller.didSelectRow(index)
        }
        section {
            property: "section"
            delegate: SchoolSectionHeader { width: ListView.view.width }
            labelPositioning: ViewSection.InlineLabels | ViewSection.CurrentLabelAtStart
        }
        onDragStarted: list.forceActiveFocus()
    }

    SectionIndexBar {
        anchors { top: list.top; bottom: list.bottom; right: parent.right }
        anchors { topMargin: 8; bottomMargin: 8 }
        visible: titles.length > 1
        titles: screen.schools.sectionTitles
        currentIndex: titles.indexOf(list.currentSection)
        onSectionSelected: index => {
            list.forceActiveFocus()
            list.positionViewAtIndex(screen.schools.rowOfSection(titles[index]), ListView.Beginning)
        }
    }

    Text {
        anchors { top: header.bottom; topMargin: 64; horizontalCenter: parent.horizontalCenter }
        width: Math.min(parent.width - 48, implicitWidth)
        visible: screen.loaded && screen.schools.count === 0
        text: search.text === "" ? qsTr("暂无学校") : qsTr("没有找到相关学校")
        textFormat: Text.PlainText
        font.pixelSize: Theme.bodyText
        color: Theme.secondaryText
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    ErrorView {
        anchors.fill: parent
        visible: screen.controller.state === ChooseSchoolViewController.Failed
        text: screen.controller.failureText
        onRetry: screen.controller.load()
    }
}
