# The Debian packages are made, installed into a root folder of their own, used there, and removed.

load ../cli/helper

setup_file() {
  load ../cli/helper
  launcher=$(command -v ccache) && export CMAKE_CXX_COMPILER_LAUNCHER=$launcher
  (cd "$repository" && cmake --workflow --preset debian)
}

packages=$repository/build/debian
version=$("$mova" --version)
version=${version#mova }
major=${version%%.*}
architecture=$(dpkg --print-architecture)
triplet=$(gcc -dumpmachine)
PATH=$PATH:/usr/sbin:/sbin

package() { echo "$packages/$1_${version}_$architecture.deb"; }
all_packages="$(package "libmova$major") $(package libmova-dev) $(package mova)"

# Runs a command as root, of a name space of its own if need be.
as_root() {
  if ((EUID == 0)); then
    "$@"
  else
    unshare --map-root-user "$@"
  fi
}

# Copies programs of this machine into the folder `scratch` with all that they need.
copy_to_scratch() {
  local files file
  files=$(ldd "$@" 2>/dev/null | grep -o '/[^ ]*\.so[^ ):]*')
  for file in "$@" $files; do
    [[ $file == "$packages"/* ]] || cp --parents -L -n "$file" scratch
  done
}

# The folder `scratch`: a shell, ldconfig, the libraries that the command needs from Debian, and a package database that
# knows the packages of these libraries.
make_scratch() {
  local names
  mkdir -p scratch/etc scratch/tmp scratch/var/lib/dpkg/info scratch/var/lib/dpkg/updates
  names=$(for deb in $all_packages; do dpkg-deb -f "$deb" Depends; done | tr ',' '\n' | awk '!/mova/ { print $1 }' | sort -u)
  dpkg-query -s $names >scratch/var/lib/dpkg/status
  for name in $names; do : >"scratch/var/lib/dpkg/info/$name.list"; done
  cp -r /etc/ld.so.conf* scratch/etc
  copy_to_scratch /bin/sh /sbin/ldconfig* "$packages/bin/mova" "$packages/libmova.so"
}

dpkg_in_scratch() { as_root dpkg --root="$PWD/scratch" --log="$PWD/dpkg.log" --force-not-root "$@"; }

installed_files() { (cd scratch && find . -path ./var/lib/dpkg -prune -o -path ./var/cache -prune -o -print | LC_ALL=C sort); }

@test "the packages hold the right files" {
  files() { dpkg-deb -c "$1" | awk '{ $2 = $3 = $4 = $5 = ""; print }' | tr -s ' ' | grep -v '/$'; }
  diff <(files "$(package "libmova$major")") - <<END
lrwxrwxrwx ./usr/lib/$triplet/libmova.so.$major -> libmova.so.$version
-rw-r--r-- ./usr/lib/$triplet/libmova.so.$version
lrwxrwxrwx ./usr/lib/$triplet/libmovautil.so.$major -> libmovautil.so.$version
-rw-r--r-- ./usr/lib/$triplet/libmovautil.so.$version
-rw-r--r-- ./usr/share/doc/libmova$major/changelog.gz
-rw-r--r-- ./usr/share/doc/libmova$major/copyright
END
  diff <(files "$(package libmova-dev)") - <<END
-rw-r--r-- ./usr/include/mova/mova.h
-rw-r--r-- ./usr/lib/$triplet/cmake/mova/movaConfig-release.cmake
-rw-r--r-- ./usr/lib/$triplet/cmake/mova/movaConfig.cmake
-rw-r--r-- ./usr/lib/$triplet/cmake/mova/movaConfigVersion.cmake
lrwxrwxrwx ./usr/lib/$triplet/libmova.so -> libmova.so.$major
lrwxrwxrwx ./usr/lib/$triplet/libmovautil.so -> libmovautil.so.$major
-rw-r--r-- ./usr/lib/$triplet/pkgconfig/mova.pc
-rw-r--r-- ./usr/share/doc/libmova-dev/changelog.gz
-rw-r--r-- ./usr/share/doc/libmova-dev/copyright
END
  diff <(files "$(package mova)") - <<END
-rwxr-xr-x ./usr/bin/mova
-rw-r--r-- ./usr/share/bash-completion/completions/mova
-rw-r--r-- ./usr/share/doc/mova/changelog.gz
-rw-r--r-- ./usr/share/doc/mova/copyright
-rw-r--r-- ./usr/share/fish/vendor_completions.d/mova.fish
-rw-r--r-- ./usr/share/man/man1/mova.1.gz
-rw-r--r-- ./usr/share/zsh/vendor-completions/_mova
END
  for deb in $all_packages; do
    [ "$(dpkg-deb -c "$deb" | awk '$2 != "root/root" || /\/$/ && !/^drwxr-xr-x/')" = "" ]
  done
}

@test "the programs of the packages are hardened" {
  for file in bin/mova libmova.so libmovautil.so; do
    readelf -W --dyn-syms "$packages/$file" | grep -q __stack_chk_fail
    readelf -W -d "$packages/$file" | grep -q BIND_NOW
    readelf -W -l "$packages/$file" | grep -q GNU_RELRO
  done
}

@test "the packages tell what they need and what they are" {
  [ "$(dpkg-deb -f "$(package libmova-dev)" Depends)" = "libmova$major (= $version)" ]
  [[ "$(dpkg-deb -f "$(package mova)" Depends)" == "libmova$major (= $version), libc6 "* ]]
  [[ "$(dpkg-deb -f "$(package "libmova$major")" Depends)" =~ libc6.*libstdc\+\+6.*libtinyxml2 ]]
  [ "$(for deb in $all_packages; do dpkg-deb -f "$deb" Section; done)" = $'libs\nlibdevel\nvideo' ]
  [[ "$(dpkg-deb -f "$(package mova)" Description)" == "converter for closed-caption and subtitle files"$'\n '* ]]
  # Programs of other packages come to depend on the library through this.
  [ "$(dpkg-deb -I "$(package "libmova$major")" shlibs)" = "libmova $major libmova$major (>= $version)
libmovautil $major libmova$major (>= $version)" ]
}

@test "what is installed has no path of the build in it" {
  mkdir all
  for deb in $all_packages; do dpkg-deb -x "$deb" all; done
  run ! grep -r "$repository" all
  run -0 readelf -d all/usr/bin/mova all/usr/lib/*/lib*.so.$version
  [[ "$output" == *NEEDED* && "$output" != *PATH* ]]
}

@test "they install, work and go without a trace" {
  make_scratch
  installed_files >before
  dpkg_in_scratch --install $all_packages

  caption_file scratch/tmp/film.txt
  as_root chroot scratch /usr/bin/mova convert /tmp/film.txt --to SubRip
  same_bytes scratch/tmp/film.srt expected_subrip
  rm scratch/tmp/film.*
  mandoc -T lint -W error scratch/usr/share/man/man1/mova.1.gz

  # Programs are compiled against the installed library, through CMake and through pkg-config.
  local lib=$PWD/scratch/usr/lib/$triplet
  cmake -S "$repository/tests/package/consumer" -B consumer -G Ninja -DCMAKE_PREFIX_PATH="$PWD/scratch/usr"
  cmake --build consumer
  g++ "$repository/tests/host/host.cpp" -o host -Wl,-rpath-link,"$lib" \
    $(PKG_CONFIG_PATH=$lib/pkgconfig pkg-config --cflags --libs mova)
  for program in consumer/consumer ./host; do
    caption_file film.txt
    LD_LIBRARY_PATH=$lib "$program" film.txt out.txt >/dev/null
    same_bytes out.srt expected_subrip
    rm film.txt out.*
  done

  dpkg_in_scratch --purge mova libmova-dev "libmova$major"
  diff before <(installed_files | grep -v '^\./etc/ld.so.cache$')
  run ! grep -i mova scratch/var/lib/dpkg/status
}

@test "the command is not installed without its library" {
  make_scratch
  run -1 dpkg_in_scratch --install "$(package mova)"
  [[ "$output" == *"mova depends on libmova$major (= $version)"* ]]
}
