import QtQuick

// A named symbol ("exclamationmark.triangle") drawn from the application's own icon set.
Image {
    required property string name
    property int size: 48

    source: "symbols/" + name + ".svg"
    sourceSize.width: size
    sourceSize.height: size
    fillMode: Image.PreserveAspectFit
}
