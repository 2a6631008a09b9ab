# Measures the extraction of a cabinet: CabFile, a bare walk of the platform's iterator, and a native
# tool on the same file. To be sourced by a script that has a Wine display and prefix (see
# scripts/lib/wine.sh).
#
#   bench_cabinet FOLDER    works in FOLDER and prints times, and ratios as figures of the table

cabinet_files=500
cabinet_file_bytes=280000
cabinet_seconds=600

# Text of random numbers: deflate has to work, and takes a quarter off. 500 files make 100 MiB.
make_large_cabinet() {
    local folder=$1 i names=()
    mkdir -p "$folder/large"
    for ((i = 0; i < cabinet_files; ++i)); do
        names+=("$(printf 'file%03d.txt' "$i")")
    done
    # Written at once and cut afterwards, which is faster than to start a tool for each file.
    head -c $((cabinet_files * cabinet_file_bytes * 3 / 4)) /dev/urandom | base64 -w 0 |
        (cd "$folder/large" && split -b "$cabinet_file_bytes" -d -a 3 --additional-suffix=.txt - file)
    (cd "$folder/large" && gcab --create --zip ../large.cab "${names[@]}")
    rm -rf "$folder/large"
}

native_milliseconds() {
    local cabinet=$1 folder=$2 begun ended best= taken run
    for run in 1 2 3; do
        rm -rf "$folder"
        mkdir -p "$folder"
        begun=$(date +%s%N)
        cabextract -q -d "$folder" "$cabinet" >&2
        ended=$(date +%s%N)
        taken=$(((ended - begun) / 1000000))
        if [ -z "$best" ] || [ "$taken" -lt "$best" ]; then best=$taken; fi
    done
    rm -rf "$folder"
    printf '%d\n' "$best"
}

bench_cabinet() {
    local folder=$1 native component
    make_large_cabinet "$folder"
    printf 'cabinet of %d files, %d MiB\n' "$cabinet_files" \
        $(($(stat -c %s "$folder/large.cab") / 1048576))
    wine_run "$cabinet_seconds" build/win32-tests/cabinet_bench.exe "$folder/large.cab" "$folder" |
        tr -d '\r' | tee "$folder/cabinet.log"
    component=$(sed -n 's/^CabFile \([0-9]*\) ms$/\1/p' "$folder/cabinet.log")
    native=$(native_milliseconds "$folder/large.cab" "$folder/native")
    printf 'native cabextract %d ms\n' "$native"
    sed -n 's|^CabFile / bare walk|FIGURE cabinet-bare|p' "$folder/cabinet.log"
    awk -v c="$component" -v n="$native" 'BEGIN { printf "FIGURE cabinet-native %.2f\n", c / n }'
    rm -f "$folder/large.cab"
}
