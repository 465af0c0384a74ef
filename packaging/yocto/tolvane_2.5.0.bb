SUMMARY = "Internet connection checker for embedded devices"
DESCRIPTION = "Tells by its exit status whether the maker's probe servers are reached over IPv4, over IPv6 or over \
both, and if not, which stage fails."
HOMEPAGE = "https://www.varnoko.example/tolvane/"
SECTION = "net"
LICENSE = "MIT"
LIC_FILES_CHKSUM = "file://LICENSE;md5=f7744c15ab7c5d1e1d7fa9db483f0e8c"

inherit cmake systemd

# The source tree that this recipe is part of; a copy of the recipe in another layer needs a value of its own.
TOLVANE_TREE ?= "${@os.path.abspath(d.getVar('FILE_DIRNAME') + '/../..')}"
SRC_URI = " \
    file://${TOLVANE_TREE}/CMakeLists.txt \
    file://${TOLVANE_TREE}/LICENSE \
    file://${TOLVANE_TREE}/cmake \
    file://${TOLVANE_TREE}/docs \
    file://${TOLVANE_TREE}/include \
    file://${TOLVANE_TREE}/packaging/debian \
    file://${TOLVANE_TREE}/packaging/systemd \
    file://${TOLVANE_TREE}/scripts \
    file://${TOLVANE_TREE}/src \
"
S = "${UNPACKDIR}${TOLVANE_TREE}"

# A read-only tree has a read-only copy, which BitBake could not remove.
do_unpack[postfuncs] += "make_copy_writable"
make_copy_writable() {
    chmod -R u+w ${S}
}

# DNS names of the probe servers, for local.conf or a .bbappend. For one of the six slots:
# EXTRA_OECMAKE:append:pn-tolvane = " -DTOLVANE_V4_HOST_A=old4.example.com"
TOLVANE_V4_HOST ?= ""
TOLVANE_V6_HOST ?= ""
EXTRA_OECMAKE = "-DTOLVANE_V4_HOST=${TOLVANE_V4_HOST} -DTOLVANE_V6_HOST=${TOLVANE_V6_HOST}"

do_configure:append() {
    if [ -z "${TOLVANE_V4_HOST}" ] || [ -z "${TOLVANE_V6_HOST}" ]; then
        bbwarn "TOLVANE_V4_HOST or TOLVANE_V6_HOST is not set: no check over that family can succeed"
    fi
}

SYSTEMD_SERVICE:${PN} = "tolvane.timer tolvane.service tolvane-online.service"
SYSTEMD_AUTO_ENABLE = "disable"

do_install:append() {
    if ${@bb.utils.contains('DISTRO_FEATURES', 'systemd', 'true', 'false', d)}; then
        install -d ${D}${systemd_system_unitdir}
        install -m 0644 ${S}/packaging/systemd/* ${D}${systemd_system_unitdir}
        install -D -m 0644 ${S}/packaging/debian/tolvane.default ${D}${sysconfdir}/default/tolvane
    fi
}

CONFFILES:${PN} = "${sysconfdir}/default/tolvane"
# The checker reads ifconfig in BusyBox's form; net-tools would put its own in BusyBox's place.
RDEPENDS:${PN} = "busybox"
RCONFLICTS:${PN} = "net-tools"
