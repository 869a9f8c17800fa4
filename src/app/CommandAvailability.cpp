#include "CommandAvailability.h"

CommandAvailability CommandAvailability::in(const CommandContext &context)
{
    const bool cardAtHand = context.hasBoard && context.hasSelection;
    return {
        .addFolder = context.hasBoard,
        .openInFileManager = cardAtHand,
        .refresh = context.hasBoard,
        .manageTaxonomy = context.hasBoard,
        .move = cardAtHand && !context.sortsByPriority,
        .setStatus = cardAtHand,
        .toggleSortByPriority = context.hasBoard,
        .startTimer = cardAtHand && context.hasTimer,
        .stopTimer = context.hasTimer && context.timerIsRunning,
    };
}
