# Buildroot's package of tolvane was not built by Buildroot, only checked. BR2_EXTERNAL names this directory.
include $(sort $(wildcard $(BR2_EXTERNAL_TOLVANE_PATH)/package/*/*.mk))
