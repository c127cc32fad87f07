# Sourced by what runs programs for Windows: a Wine of its own, so that nobody's registry and documents are touched.

# Debian keeps Wine's own programs out of the path.
find_wine() {
    export PATH=/usr/lib/wine:$PATH
}

# use_wine PREFIX PROGRAM_FOLDER: the programs find their libraries in PROGRAM_FOLDER. The windows are drawn into memory.
use_wine() {
    find_wine
    mkdir -p "$1"
    WINEPREFIX=$(realpath "$1")
    HOME=$WINEPREFIX # the documents are there
    # Neither a debugger, which takes minutes to tell of a crash, nor entries in a desktop's menu.
    WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES='winedbg.exe=d;winemenubuilder.exe=d'
    WINEPATH=$(windows_path "$2")
    # Windows in memory know no fonts but those of a folder.
    mkdir -p "$1/fonts"
    cp -n /usr/share/fonts/truetype/dejavu/DejaVuSans{,Mono}.ttf "$1/fonts"
    # Wine hands these on as "QT_...", and nothing that begins so.
    WINEQT_QPA_PLATFORM=offscreen WINEQT_PLUGIN_PATH=$WINEPATH
    WINEQT_QPA_FONTDIR=$(windows_path "$1/fonts") WINEQT_FORCE_STDERR_LOGGING=1
    export WINEPREFIX HOME WINEARCH WINEDEBUG WINEDLLOVERRIDES WINEPATH
    export WINEQT_QPA_PLATFORM WINEQT_PLUGIN_PATH WINEQT_QPA_FONTDIR WINEQT_FORCE_STDERR_LOGGING
    # Services that a program starts would hold on to its output: they are started first, without one.
    wineserver64 -p </dev/null >/dev/null 2>&1
    wine64 wineboot -i </dev/null >/dev/null 2>&1
    trap 'wineserver64 -k' EXIT
}

# A path of this computer as the programs see it.
windows_path() {
    printf 'Z:%s' "$(realpath -m "$1" | tr / '\\')"
}
