# shellcheck shell=bash
# For sourcing: where the Windows environment lies, and whether this machine needs one of its own.
#
#   RUX_WINE_ROOT   a folder with a 32-bit system and Wine in it; it stays between runs, outside the checkout

wine_root=${RUX_WINE_ROOT:-${XDG_CACHE_HOME:-$HOME/.cache}/ruxlib/wine-i386}
wine_prefix=$wine_root-prefix-$(id -u)

# True where an installed Wine runs 32-bit programs.
has_native_wine() {
    command -v wine >/dev/null || return 1
    compgen -G '/usr/lib/*/wine/i386-windows' >/dev/null ||
        compgen -G '/usr/lib*/wine/i386-windows' >/dev/null ||
        compgen -G '/opt/wine*/lib*/wine/i386-windows' >/dev/null
}
