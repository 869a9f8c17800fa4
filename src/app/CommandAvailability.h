#pragma once

// What the menu commands can act on at one moment.
struct CommandContext {
    bool hasBoard = false;
    bool hasSelection = false; // a card is selected on the board
    bool sortsByPriority = false;
    bool hasTimer = false;
    bool timerIsRunning = false;

    bool operator==(const CommandContext &) const = default;
};

// Which menu commands are enabled in a context. A command whose model is absent stays disabled,
// so before start-up has finished only the windows that show their own waiting panel can open.
struct CommandAvailability {
    bool addFolder = false;
    bool openInFileManager = false;
    bool refresh = false;
    bool manageTaxonomy = false;
    // The four moves within a column; a hand-made order means nothing while columns sort themselves.
    bool move = false;
    bool setStatus = false;
    bool toggleSortByPriority = false;
    bool startTimer = false;
    bool stopTimer = false;

    bool operator==(const CommandAvailability &) const = default;

    static CommandAvailability in(const CommandContext &context);
};
