import QtQuick

// Where one of Velto's single-instance windows lives: opening it makes it once, and opening it
// again brings the same window forward.
QtObject {
    id: place
    required property Component component
    // The QObject parent of the window, which also keeps it alive.
    required property QtObject owner
    property var properties: ({})
    property Window instance: null

    function open() {
        if (instance === null)
            instance = component.createObject(owner, properties)
        instance.show()
        instance.raise()
        instance.requestActivate()
    }
}
