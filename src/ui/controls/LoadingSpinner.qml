import QtQuick

//! Turns while it is visible.
Item {
    id: control

    property color color: Theme.secondaryText

    implicitWidth: 36
    implicitHeight: 36
    Accessible.role: Accessible.Animation
    Accessible.name: qsTr("正在加载")

    Item {
        id: spokes
        anchors.fill: parent

        Repeater {
            model: 12

            Rectangle {
                required property int index

                x: (spokes.width - width) / 2
                width: spokes.width * 0.08
                height: spokes.height * 0.27
                radius: width / 2
                color: control.color
                opacity: (index + 2) / 13
                transform: Rotation {
                    origin { x: spokes.width * 0.04; y: spokes.height / 2 }
                    angle: index * 30
                }
            }
        }
    }

    // Steps of one spoke, as such a wheel turns.
    SequentialAnimation {
        running: control.visible
        loops: Animation.Infinite
        PauseAnimation { duration: 80 }
        ScriptAction { script: spokes.rotation = (spokes.rotation + 30) % 360 }
    }
}
