pragma ComponentBehavior: Bound
import QtQuick
import Zorvane.Ui

/* The guide: pages to leaf through. Escape puts it away unfinished. */
ModalLayer {
    id: root

    required property Onboarding onboarding
    readonly property var steps: onboarding.steps
    property int currentStep: 0
    readonly property bool onLastStep: currentStep === steps.length - 1

    function goForward(): void {
        if (root.onLastStep)
            root.onboarding.finish();
        else
            root.currentStep += 1;
    }

    function goBack(): void {
        if (root.currentStep > 0)
            root.currentStep -= 1;
    }

    objectName: "onboarding"
    anchors.fill: parent
    open: onboarding.showingOnboarding
    boxWidth: 540
    boxHeight: 404
    boxRadius: 14
    shadowBlur: 24
    shadowDown: 16
    shadowStrength: Theme.dark ? 0.65 : 0.38

    // It may be shown again before it has faded away.
    onStepsChanged: currentStep = 0

    Accessible.role: Accessible.Dialog
    Accessible.name: steps[currentStep]?.title ?? ""

    Keys.onReturnPressed: event => {
        if (!event.isAutoRepeat)
            root.goForward();
    }
    Keys.onEnterPressed: event => {
        if (!event.isAutoRepeat)
            root.goForward();
    }
    Keys.onEscapePressed: root.onboarding.close()
    Keys.onTabPressed: skip.forceActiveFocus(Qt.TabFocusReason)
    Keys.onBacktabPressed: forward.forceActiveFocus(Qt.BacktabFocusReason)

    Repeater {
        model: root.steps

        OnboardingPage {
            id: page

            required property int index
            required property var modelData
            readonly property bool current: index === root.currentStep

            y: 58
            width: parent.width
            height: 260
            symbol: modelData.symbol
            title: modelData.title
            message: modelData.message
            opacity: current ? 1 : 0
            visible: opacity > 0
            scale: current ? 1 : Motion.pageFrom

            Behavior on opacity  {
                NumberAnimation {
                    duration: Motion.page
                    easing.type: Easing.OutCubic
                }
            }

            Behavior on scale  {
                NumberAnimation {
                    duration: Motion.page
                    easing.type: Easing.OutCubic
                }
            }
        }
    }

    PlainTextButton {
        id: skip

        anchors.right: parent.right
        anchors.rightMargin: 16
        y: 16
        text: "Skip"
        toolTip: "Close the tutorial"
        KeyNavigation.tab: back
        KeyNavigation.backtab: forward
        onClicked: root.onboarding.finish()
    }

    Button {
        id: back

        x: 24
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 24
        leastWidth: 84
        text: "Back"
        available: root.currentStep > 0
        KeyNavigation.tab: forward
        KeyNavigation.backtab: skip
        onClicked: root.goBack()
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.verticalCenter: back.verticalCenter
        spacing: 7

        Accessible.role: Accessible.Graphic
        Accessible.name: "Page " + (root.currentStep + 1) + " of " + root.steps.length

        Repeater {
            model: root.steps.length

            Rectangle {
                required property int index
                readonly property bool current: index === root.currentStep

                objectName: "pageMark"
                width: current ? 22 : 7
                height: 7
                radius: 3.5
                color: current ? Theme.blue : Theme.faded(Theme.secondary, 0.25 * Theme.secondary.a)

                Behavior on width  {
                    NumberAnimation {
                        duration: Motion.pageMark
                        easing.type: Easing.OutCubic
                    }
                }
            }
        }
    }

    Button {
        id: forward

        anchors.right: parent.right
        anchors.rightMargin: 24
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 24
        leastWidth: 104
        prominent: true
        text: root.onLastStep ? "Get Started" : "Continue"
        KeyNavigation.tab: skip
        KeyNavigation.backtab: back
        Accessible.defaultButton: true
        onClicked: root.goForward()
    }
}
