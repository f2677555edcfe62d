# Shared by run.sh and test.sh: packages of a bare Debian 12, and the build.

build_packages="g++ cmake ninja-build pkg-config ccache qt6-base-dev libepoxy-dev libglm-dev libegl-dev libgl-dev
  libgl1-mesa-dri libegl-mesa0 libtinygltf-dev libstb-dev nlohmann-json3-dev libsndfile1-dev libopenal-dev
  binutils-mingw-w64-x86-64 fonts-liberation python3 libgtest-dev libgmock-dev libbenchmark-dev"
test_packages="xvfb xauth"
desktop_packages="openbox xdotool imagemagick"

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# install_packages build|test|desktop: does nothing when all are there.
install_packages() {
  local wanted=$build_packages missing=""
  [ "$1" != build ] && wanted="$wanted $test_packages"
  [ "$1" = desktop ] && wanted="$wanted $desktop_packages"
  command -v dpkg-query >/dev/null || { echo "This script installs packages on Debian only; building with what is here."; return; }
  for package in $wanted; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
  done
  [ -z "$missing" ] && return
  echo "Installing:$missing"
  as_root apt-get update -q
  # shellcheck disable=SC2086
  DEBIAN_FRONTEND=noninteractive as_root apt-get install -y -q --no-install-recommends $missing
}

# build PRESET [TARGET...]
build() {
  local preset=$1
  shift
  local settings=()
  [ -n "${CI:-}" ] && settings+=(-DFILMS_WERROR=ON)
  [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" "${settings[@]}"
  cmake --build "build/$preset" ${1:+--target "$@"}
}
