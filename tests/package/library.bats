# Other people's programs use the library: installed, moved to another folder, or built from its sources.

load ../cli/helper

setup_file() {
  load ../cli/helper
  cmake --install "$build" --prefix "$BATS_FILE_TMPDIR/installed" >/dev/null
  mv "$BATS_FILE_TMPDIR/installed" "$BATS_FILE_TMPDIR/moved"
}

prefix=$BATS_FILE_TMPDIR/moved
version=$("$mova" --version)
version=${version#mova }
major=${version%%.*}

# configure_consumer ARGUMENT...: configures tests/package/consumer in the folder `consumer`.
configure_consumer() { cmake -S "$repository/tests/package/consumer" -B consumer -G Ninja "$@"; }

# converts PROGRAM: the program, which is tests/host/host.cpp, converts a file.
converts() {
  caption_file film.txt
  "$1" film.txt out.txt >/dev/null
  same_bytes out.srt expected_subrip
}

@test "a program that finds it through CMake" {
  configure_consumer -DCMAKE_PREFIX_PATH="$prefix" -DMOVA_VERSION="$major.0"
  cmake --build consumer
  converts consumer/consumer
}

@test "CMake finds it in a fitting version only" {
  configure_consumer -DCMAKE_PREFIX_PATH="$prefix" -DMOVA_VERSION="$version"
  for unfit in $((major + 1)) $major.999; do
    rm -r consumer
    run -1 configure_consumer -DCMAKE_PREFIX_PATH="$prefix" -DMOVA_VERSION=$unfit
    [[ "$output" == *"movaConfig.cmake, version: $version"* ]]
  done
}

@test "a program that finds it through pkg-config" {
  export PKG_CONFIG_PATH
  PKG_CONFIG_PATH=$(echo "$prefix"/lib*/pkgconfig)
  [ "$(pkg-config --modversion mova)" = "$version" ]
  # The language as of 2011 is all that the header asks for.
  g++ -std=c++11 "$repository/tests/host/host.cpp" $(pkg-config --cflags --libs mova) -o host
  LD_LIBRARY_PATH=$(pkg-config --variable=libdir mova) converts ./host
}

@test "a program that has the sources in a folder of its own" {
  # Compiled files of the release build are taken from the cache, if there is one.
  launcher=$(command -v ccache) && export CMAKE_CXX_COMPILER_LAUNCHER=$launcher
  configure_consumer -DMOVA_SOURCES="$repository" -DCMAKE_BUILD_TYPE=Release
  cmake --build consumer --target consumer
  converts consumer/consumer
  # Nothing is built for it but the libraries, and it gets none of their flags.
  ninja -C consumer -t targets all >targets
  run ! grep -E '^(mova_cli|mova_command|mova_tests|mova_golden|mova_bench|fuzz_convert):' targets
  flags=$(grep -o '"command": .*host\.cpp"' consumer/compile_commands.json)
  [[ "$flags" == *"-I$repository/include "* ]]
  run ! grep -E -- "-W|-std|-fPIC|-fvisibility|$repository/src" <<<"$flags"
}

@test "the libraries bear their versions" {
  for library in mova movautil; do
    lib=$(echo "$prefix"/lib*)/lib$library.so
    [ "$(readlink "$lib")" = "lib$library.so.$major" ]
    [ "$(readlink "$lib.$major")" = "lib$library.so.$version" ]
    readelf -d "$lib" | grep -F "Library soname: [lib$library.so.$major]"
  done
}

# component NAME: what it installs.
component() {
  cmake --install "$build" --prefix "$PWD/$1" --component "$1" >/dev/null
  (cd "$1" && find . ! -type d | sed "s|^\./||; s|^lib[^/]*/|lib/|" | LC_ALL=C sort)
}

@test "the components" {
  diff <(component runtime) - <<END
lib/libmova.so.$major
lib/libmova.so.$version
lib/libmovautil.so.$major
lib/libmovautil.so.$version
END
  diff <(component development) - <<END
include/mova/mova.h
lib/cmake/mova/movaConfig-release.cmake
lib/cmake/mova/movaConfig.cmake
lib/cmake/mova/movaConfigVersion.cmake
lib/libmova.so
lib/libmovautil.so
lib/pkgconfig/mova.pc
END
  diff <(component command) - <<END
bin/mova
share/bash-completion/completions/mova
share/fish/vendor_completions.d/mova.fish
share/man/man1/mova.1
share/zsh/site-functions/_mova
END
  # Together they are all that is installed.
  diff <(cd "$prefix" && find . ! -type d | LC_ALL=C sort) \
    <(for name in runtime development command; do (cd $name && find . ! -type d); done | LC_ALL=C sort)
}

@test "a compiler's warning doesn't stop the build" {
  grep -q -e -Wall "$build/compile_commands.json"
  run ! grep -q -e -Werror "$build/compile_commands.json"
}
