# The packages that Brenvik is built and tested with, in one place. Sourced by the scripts; `install_missing
# NAME...` installs what a machine doesn't have. The modeller's packages link the two libraries in the last line
# without asking for them. scripts/fresh-root proves the lists on a bare machine.
build_packages=(g++ cmake ninja-build libsqlite3-dev libcli11-dev unixodbc-dev liblz4-dev
  libocct-foundation-dev libocct-modeling-algorithms-dev libocct-modeling-data-dev
  libocct-ocaf-dev libocct-data-exchange-dev
  libtbb-dev libfontconfig-dev)
test_packages=(git libgtest-dev libbenchmark-dev python3-ezdxf g++-mingw-w64-x86-64-posix clang-format
  libsqliteodbc sqlite3)
desktop_packages=(qt6-base-dev libqt6opengl6-dev libocct-visualization-dev libgl1-mesa-dri)
desktop_test_packages=(xvfb)
package_packages=(dpkg-dev file)
long_test_packages=(clang clang-tidy libclang-rt-14-dev)
cluster_test_packages=(slurmctld slurmd slurm-client munge)
fresh_root_packages=(git mmdebstrap util-linux)

install_missing() {
  local missing=()
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local sudo=()
  [ "$(id -u)" -eq 0 ] || sudo=(sudo)
  echo "Installing: ${missing[*]}" >&2
  "${sudo[@]}" apt-get update -qq >&2
  "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}
