// The numbers by which the program addresses the texts of a language: an entry is found by its line's
// position in the file. Which numbers are free for new texts of a room stands in data/language/ranges.toml.
#pragma once

namespace karvo
{

// Entries of the message table.
enum class Message {
    cannotOpenFile = 1,       // followed by a path
    cannotOpenFileAdvice = 2, // what to do about it
    valueRefused = 83,        // a line break, "CV ", the number and a blank follow, then `cvNotWritten`
    resetAcknowledged = 85,
    resetNotAcknowledged = 86,
    resetSent = 87,
    resetQuestion1 = 88,
    resetQuestion2 = 89,
    resetQuestion3 = 90,
    resetQuestionLast = 91,
    resetOfDecoder1 = 92, // not for a receiver, before the last line
    resetOfDecoder2 = 93,
    cvNotWritten = 94,
    announcementRefused = 294,
    cv99NeedsFirmware = 296,
    writtenNotice = 297,   // behind "CV 48  "
    unitOfSpeedStep = 301, // exactly ten characters
    noReply = 233,
    unknownDecoder = 234,
    wrongCheckByte = 273,
    nothingWritten = 572, // after `unknownDecoder`
    olderKv04 = 299,      // type text of the KV04 until December 2008
    offlineListQuestion1 = 600,
    offlineListQuestion2 = 601,
    offlineListQuestion3 = 602,
    expertFileNotice = 603,
    helpFirst = 604, // to helpLast: the lines of the help for a newcomer
    helpLast = 609,
    moduleHelpFirst = 610, // to moduleHelpLast: the lines about the XT module
    moduleHelpLast = 612,
    accessGroupAdvice = 660, // {1}: the group
    notADescription = 680,   // {1}: the path
    descriptionFaults = 681, // {1}: the path, {2}: how many lines, {3}: the first of them
    outsideLimits = 682,     // {1}: CV, {2}: the value, {3} and {4}: its limits
    otherModel = 683,        // {1}: of the list, {2}: of the vehicle
    backupFailed = 684,      // {1}: the system's words
    otherDecoder = 685,      // {1}: its identification, {2}: that of the decoder before
    readAfterReset = 686,    // question
    lacksServoCvs = 695,
    fileHasAtmega168 = 690,
    vehicleHasAtmega328 = 691,
    cannotCompare = 692,
    fileHasAtmega328 = 693,
    vehicleHasAtmega168 = 694,
    nothingRead = 696,
    valuesFromFile = 697,
    processorLabel = 701,
    descriptionFileLabel = 702,
    expertFileLabel = 703,
    notAListFile = 710,     // {1}: the path, {2}: the line
    listFileTooLong = 711,  // {1}: the path, {2}: the line
    listWithoutModel = 712, // {1}: the path
    listOpenedInPart = 713, // {1}: the path; some of the following stand below it
    linesWithoutCv = 714,   // {1}: the lines, as in all up to `listEndMissing`
    linesBeyondTable = 715,
    linesRepeated = 716,
    linesWithWrongValue = 717,
    listEndMissing = 718,
    unknownProcessor = 719, // {1}: the line, {2}: the word
    cannotSaveFile = 720,   // {1}: the path, {2}: the system's words
    nothingToSave = 721,
    unsavedChangesQuestion = 722,
    recoveryQuestion = 723,      // {1}: the list file
    recoveryNotKept = 724,       // {1}: the path, {2}: the system's words
    firstListHasProcessor = 725, // {1}: the processor
    replaceFileQuestion = 726,   // {1}: the path
    batchNotInList = 727,        // {1}: the CV
    batchOutsideLimits = 728,    // {1}: the CV, {2} and {3}: its limits
    batchCannotRead = 729,
    batchNotAList = 730,
    batchChangedMeanwhile = 731,
    batchCannotSave = 732, // {1}: the system's words
};

// Entries of the control-caption table.
enum class Caption {
    windowTitle = 1,
    port = 2,
    firstAddress = 3,
    secondAddress = 4,
    writeSingle = 5,
    writeChanged = 6,
    takeValue = 7,
    servoAddress = 8,
    cvNumber = 9,
    cvValue = 10,
    cvFactoryValue = 11,
    cvLimits = 12,
    computedValue = 13,
    chosenCv = 14,
    bits = 15,
    noDecoder = 16,
    address = 17,
    emptyListHint = 18,
    ready = 19,
    notAvailable = 20,
    firmware = 21,
    subLevel = 22,
    limitsTo = 23,
    cvList = 24,
    cvNotInList = 25,
    nothingFound = 26,
    bytesReceived = 27, // {1} of {2}
    expertMode = 28,
    listFilled = 29, // {1} CVs
    waitForEndOfRead = 30,
    searchIndexTitle = 31,
    searchIndexPrompt = 32,
    searchWordTitle = 33,
    searchWordPrompt = 34,
    versionText = 35,
    about1 = 36,
    about2 = 37,
    about3 = 38,
    about4 = 39,
    about5 = 40,
    offlineList = 41,
    unnamedBit = 42, // {1}: the bit's number, 0 to 7
    readAgain = 43,
    simulatedInterface = 44,
    portToolTip = 45,  // {1} device, {2} description
    shortAddress = 46, // behind an address: the form that CV29 selects
    longAddress = 47,
    lineInUse = 48, // what the blinking sign means
    portSearchTitle = 130,
    portSearchRunning = 131,
    portSearchFound = 132,
    portSearchNothing = 133,
    portSearchTake = 134,
    portSearchCancel = 135,
    portSearchAgain = 136,
    expertLabel = 160,
    changedMark = 161,
    nothingToWrite = 180,
    writeSummary = 181, // {1} of {2}
    outcomeWritten = 182,
    outcomeUnconfirmed = 183,
    outcomeRefused = 184,
    outcomeNotReady = 185,
    outcomeNoReply = 186,
    outcomeUnacknowledged = 187,
    outcomeNotReached = 188,
    outcomeNotUsed = 189,
    outcomeDecodersOwn = 190,
    outcomeReset = 191,
    outcomeDeclined = 192,
    outcomeFirmware = 193,
    outcomeOtherDecoder = 194,
    outcomeOutsideLimits = 195,
    comparedEqual = 170,
    comparedDifferent = 171,
    comparedOnlyFirst = 172,
    comparedOnlySecond = 173,
    comparedCounts = 174, // {1} equal, {2} different, {3} only in the first, {4} only in the second
    comparedResult = 175, // heading of the column
    okButton = 700,
    cancelButton = 701,
    yesButton = 702,
    noButton = 703,
    closeButton = 704,
    saveButton = 705,
    openButton = 706,
    informationTitle = 707,
    questionTitle = 708,
    errorTitle = 709,
    writtenSuccessfully = 873,
    readAll = 884, // caption of the button Start and status text of a read
    noReplyStatus = 887,
    writingCv = 888,      // the number follows
    noReplyToWrite = 900, // "%" stayed unanswered; other models than KV07 and KV08
    writeAgain = 901,     // "EWS" stayed unanswered
    noReplyToWriteKv07 = 902,
    writeAgainKv07 = 903,
};

// Entry 76 of the menu-caption table is no menu item: the status text of a write's time-out.
inline constexpr unsigned writeTimeOutStatusEntry = 76;

} // namespace karvo
