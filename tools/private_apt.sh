# Sourced: Debian's packages without rights of the system and without a change to it. Whoever sources this names a
# folder, below which the package lists lie.

# privateApt FOLDER OPTION...: makes the array aptOptions, which each call of apt-get takes.
privateApt() {
    aptFolder=$1
    aptOptions=(-q -o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$aptFolder/parts"
        -o "Dir::State::Lists=$aptFolder/lists" -o "Dir::Cache=$aptFolder/cache" -o APT::Get::List-Cleanup=false
        -o APT::Sandbox::User= -o Acquire::Languages=none "${@:2}")
}

# updatePrivateApt deb|deb-src: fetches the lists of the system's own package sources, asked for programs or sources of
# whatever architecture.
updatePrivateApt() {
    local kind=$1 file name
    rm -rf "$aptFolder"
    mkdir -p "$aptFolder/lists/partial" "$aptFolder/cache/archives/partial" "$aptFolder/parts"
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
        name=$aptFolder/parts/$(basename "$file" | tr -c 'A-Za-z0-9._\n-' '_')
        case "$file" in
            *.list) [ ! -f "$file" ] || sed -n "s/\barch=[^] ]*//; s/^deb[[:space:]]/$kind /p" "$file" >"$name" ;;
            *.sources) [ ! -f "$file" ] || sed "s/^Types:.*/Types: $kind/; /^Architectures:/d" "$file" >"$name" ;;
        esac
    done
    # One list that cannot be had, of another archive say, is no reason to give up.
    apt-get "${aptOptions[@]}" update || echo "Some package lists could not be had."
}
