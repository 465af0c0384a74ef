# Only where it is asked for: the layer by itself changes no other recipe.
FILESEXTRAPATHS:prepend := "${@'${THISDIR}/busybox:' if d.getVar('TOLVANE_BUSYBOX') == '1' else ''}"
SRC_URI += "${@'file://tolvane.cfg' if d.getVar('TOLVANE_BUSYBOX') == '1' else ''}"
