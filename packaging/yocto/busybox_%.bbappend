FILESEXTRAPATHS:prepend := "${THISDIR}/busybox:"
SRC_URI += "file://tolvane.cfg"
