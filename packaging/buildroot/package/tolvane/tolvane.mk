# Buildroot's package of tolvane; not built by Buildroot, only checked: make reads it with a stub of cmake-package.
TOLVANE_VERSION = 2.5.0
TOLVANE_SITE = $(BR2_EXTERNAL_TOLVANE_PATH)/../..
TOLVANE_SITE_METHOD = local
TOLVANE_OVERRIDE_SRCDIR_RSYNC_EXCLUSIONS = --exclude=/build
TOLVANE_LICENSE = MIT
TOLVANE_LICENSE_FILES = LICENSE

TOLVANE_HOSTS = V4_HOST_A V4_HOST_B V4_HOST_C V6_HOST_A V6_HOST_B V6_HOST_C
TOLVANE_CONF_OPTS = $(foreach host,$(TOLVANE_HOSTS),\
	$(if $(call qstrip,$(BR2_PACKAGE_TOLVANE_$(host))),-DTOLVANE_$(host)=$(BR2_PACKAGE_TOLVANE_$(host))))

# The classic output of ifconfig with its addresses, and the digest of a document's date.
define TOLVANE_BUSYBOX_CONFIG_FIXUPS
	$(call KCONFIG_ENABLE_OPT,CONFIG_IFCONFIG)
	$(call KCONFIG_ENABLE_OPT,CONFIG_FEATURE_IFCONFIG_STATUS)
	$(call KCONFIG_ENABLE_OPT,CONFIG_FEATURE_IPV6)
	$(call KCONFIG_ENABLE_OPT,CONFIG_MD5SUM)
endef

$(eval $(cmake-package))
