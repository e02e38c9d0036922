import QtQuick

Text {
    property bool waits: false
    text: "Read the serial number"
    function ask() { waits = true; instrument.readSerialNumber() }
    TapHandler { enabled: !waits; onTapped: ask() }
    Connections {
        target: instrument
        function onTold(serialNumber) { text = serialNumber; waits = false }
    }
}
