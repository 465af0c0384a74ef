# BitBake parsed this with OpenEmbedded-Core (blacksail) and ran its tasks up to do_install, with the build machine's
# compiler in place of the cross toolchain, which could not be downloaded. No image was made with it.
SUMMARY = "Internet connection checker for embedded devices"
DESCRIPTION = "Tells by its exit status whether the maker's probe servers are reached over IPv4, over IPv6 or over both, \
and if not, which stage fails."
SECTION = "net"
LICENSE = "MIT"
LIC_FILES_CHKSUM = "file://LICENSE;md5=f7744c15ab7c5d1e1d7fa9db483f0e8c"

inherit cmake externalsrc

# The source tree that this recipe is part of. A copy of the recipe in another layer needs a value of its own.
EXTERNALSRC ?= "${@os.path.abspath(d.getVar('FILE_DIRNAME') + '/../..')}"
# No links to the work directory in the source tree.
EXTERNALSRC_SYMLINKS = ""

# DNS names of the probe servers, for local.conf or a .bbappend. The build has a default for each that is empty.
TOLVANE_V4_HOST_A ?= ""
TOLVANE_V4_HOST_B ?= ""
TOLVANE_V4_HOST_C ?= ""
TOLVANE_V6_HOST_A ?= ""
TOLVANE_V6_HOST_B ?= ""
TOLVANE_V6_HOST_C ?= ""
TOLVANE_HOSTS = "V4_HOST_A V4_HOST_B V4_HOST_C V6_HOST_A V6_HOST_B V6_HOST_C"

def host_options(d):
    hosts = {slot: d.getVar(f"TOLVANE_{slot}") for slot in d.getVar("TOLVANE_HOSTS").split()}
    return " ".join(f"-DTOLVANE_{slot}={name}" for slot, name in hosts.items() if name)

EXTRA_OECMAKE = "${@host_options(d)}"
# BitBake does not see variables whose names are composed.
EXTRA_OECMAKE[vardeps] = "${@' '.join('TOLVANE_' + slot for slot in d.getVar('TOLVANE_HOSTS').split())}"

# Below /usr/share/doc, where the build installs these as examples, they would be in the package of the documents.
do_install:append() {
    install -m 0755 ${S}/scripts/cron-tolvane ${S}/scripts/hotplug-tolvane ${D}${sbindir}
}

FILES:${PN} = "${sbindir} ${bindir}"
# The checker reads ifconfig in BusyBox's form; net-tools would put its own in BusyBox's place.
RDEPENDS:${PN} = "busybox"
RCONFLICTS:${PN} = "net-tools"
