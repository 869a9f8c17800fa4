pragma Singleton
import QtQuick
import Velto

// Every keyboard shortcut of the menus, in one table: the menus take their keys from here, and the
// list of shortcuts shows the same rows.
QtObject {
    readonly property string addFolder: "Ctrl+O"
    readonly property string openInFileManager: "Ctrl+Return"
    readonly property string settings: "Ctrl+,"
    readonly property string quit: "Ctrl+Q"
    readonly property string refresh: "Ctrl+R"
    readonly property string refreshAlso: "F5"
    readonly property string manageTaxonomy: "Ctrl+Shift+P"
    readonly property string analytics: "Ctrl+Shift+1"
    readonly property string diagnostics: "Ctrl+Shift+D"
    readonly property string moveUp: "Ctrl+Alt+Up"
    readonly property string moveDown: "Ctrl+Alt+Down"
    readonly property string moveLeft: "Ctrl+Alt+Left"
    readonly property string moveRight: "Ctrl+Alt+Right"
    readonly property string startTimer: "Ctrl+Shift+T"
    readonly property string stopTimer: "Ctrl+Shift+."
    readonly property string shortcuts: "F1"
    readonly property string search: "Ctrl+F"

    readonly property var rows: [
        { menu: "File", command: "Add Folder…", keys: addFolder },
        { menu: "File", command: PlatformWords.openInFileManager, keys: openInFileManager },
        { menu: "File", command: "Settings…", keys: settings },
        { menu: "File", command: "Quit", keys: quit },
        { menu: "View", command: "Refresh", keys: refresh + ", " + refreshAlso },
        { menu: "View", command: "Projects & Tags…", keys: manageTaxonomy },
        { menu: "View", command: "Analytics", keys: analytics },
        { menu: "View", command: "Diagnostics", keys: diagnostics },
        { menu: "Card", command: "Move Up", keys: moveUp },
        { menu: "Card", command: "Move Down", keys: moveDown },
        { menu: "Card", command: "Move to Previous Column", keys: moveLeft },
        { menu: "Card", command: "Move to Next Column", keys: moveRight },
        { menu: "Timer", command: "Start Timer on Selected Card", keys: startTimer },
        { menu: "Timer", command: "Stop Timer", keys: stopTimer },
        { menu: "Help", command: "Keyboard Shortcuts", keys: shortcuts },
        { menu: "Board", command: "Search Folders", keys: search },
        { menu: "Board", command: "Go to Another Card", keys: "Arrow keys, Home, End" },
        { menu: "Board", command: "Show the Card's Details", keys: "Return" },
        { menu: "Board", command: "Close the Details", keys: "Escape" },
        { menu: "Board", command: "Card Menu", keys: "Menu, Shift+F10" },
        { menu: "Board", command: "Remove Card…", keys: "Delete" }
    ]
}
