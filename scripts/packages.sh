# Sourced by the other scripts: makes sure that Debian packages are installed.

# need_packages PACKAGE...: installs what is missing when run by root, else says what to install.
need_packages() {
  local package missing=()
  for package in "$@"; do
    # The architecture may be part of the name, and dpkg wants it there for foreign packages.
    dpkg-query -W -f '${db:Status-Abbrev}\n' "$package" 2>/dev/null | grep -q '^ii' ||
      missing+=("$package")
  done
  [ "${#missing[@]}" -eq 0 ] && return 0
  if [ "$(id -u)" -ne 0 ]; then
    echo "Missing packages. Install them with: sudo apt-get install ${missing[*]}" >&2
    return 2
  fi
  echo "Installing: ${missing[*]}" >&2
  # An index that cannot be renewed is no reason to stop; a package that cannot be installed is.
  apt-get update -qq >&2 || echo "apt-get update reported errors; going on" >&2
  DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# need_node: Node.js and npm. Node may have come from elsewhere than Debian, and then brings npm along.
need_node() {
  local program missing=()
  for program in nodejs:node npm:npm; do
    command -v "${program#*:}" > /dev/null || missing+=("${program%:*}")
  done
  need_packages "${missing[@]}"
}

build_packages=(g++ cmake ninja-build ccache
  libjsoncpp-dev libcli11-dev libvalijson-dev libcivetweb-dev)
bench_packages=("${build_packages[@]}" libbenchmark-dev valgrind jq python3 time)
binary_packages=("${build_packages[@]}" abigail-tools binutils)
browser_packages=(chromium fonts-dejavu-core)
coverage_packages=(gcovr)
fuzz_packages=("${build_packages[@]}" clang-14 libclang-rt-14-dev llvm-14)
test_packages=("${build_packages[@]}" libgtest-dev libgmock-dev locales pkg-config
  librsvg2-bin fonts-dejavu-core python3 python3-pil curl vim)
memory_packages=("${test_packages[@]}" valgrind)
debian_packages=("${test_packages[@]}" build-essential debhelper
  lintian blhc binutils git iproute2 util-linux)
tidy_packages=("${bench_packages[@]}" clang-format clang-tidy)

# need_arm_packages: the cross compiler, QEMU, and JsonCpp for the target.
need_arm_packages() {
  if ! dpkg --print-foreign-architectures | grep -qx armhf; then
    if [ "$(id -u)" -ne 0 ]; then
      echo "Missing architecture. Add it with: sudo dpkg --add-architecture armhf" >&2
      return 2
    fi
    dpkg --add-architecture armhf || return 2
  fi
  need_packages g++-arm-linux-gnueabihf qemu-user googletest libjsoncpp-dev:armhf libcivetweb-dev:armhf
}

# arm_ready: sets up what ARM needs. Where Debian's armhf packages cannot be had, it says so and ends
# the script; with TTR_ALLOW_NO_ARM=1, for machines that are meant to do without, it returns 1.
arm_ready() {
  need_arm_packages && return 0
  echo "NO ARM: Debian's armhf packages could not be installed, nothing is done for ARM" >&2
  [ "${TTR_ALLOW_NO_ARM:-}" = 1 ] || exit 1
  return 1
}
