################################################################################
#
# tolvane
#
################################################################################

# Buildroot built and installed this with Debian's cross compiler, without
# BusyBox. No image was made.
TOLVANE_VERSION = 2.5.0
TOLVANE_SITE = $(BR2_EXTERNAL_TOLVANE_PATH)/../..
TOLVANE_SITE_METHOD = local
TOLVANE_OVERRIDE_SRCDIR_RSYNC_EXCLUSIONS = --exclude=/build
TOLVANE_LICENSE = MIT
TOLVANE_LICENSE_FILES = LICENSE

TOLVANE_HOSTS = V4_HOST_A V4_HOST_B V4_HOST_C V6_HOST_A V6_HOST_B V6_HOST_C
TOLVANE_CONF_OPTS = $(foreach host,$(TOLVANE_HOSTS),\
	$(if $(call qstrip,$(BR2_PACKAGE_TOLVANE_$(host))),-DTOLVANE_$(host)=$(BR2_PACKAGE_TOLVANE_$(host))))

# The checker needs ifconfig in its classic form and md5sum, the scripts next to
# it the rest. Buildroot's default lacks timeout, its minimal configuration more.
define TOLVANE_BUSYBOX_CONFIG_FIXUPS
	$(call KCONFIG_ENABLE_OPT,CONFIG_IFCONFIG)
	$(call KCONFIG_ENABLE_OPT,CONFIG_FEATURE_IFCONFIG_STATUS)
	$(call KCONFIG_ENABLE_OPT,CONFIG_FEATURE_IPV6)
	$(call KCONFIG_ENABLE_OPT,CONFIG_MD5SUM)
	$(call KCONFIG_ENABLE_OPT,CONFIG_CAT)
	$(call KCONFIG_ENABLE_OPT,CONFIG_DD)
	$(call KCONFIG_ENABLE_OPT,CONFIG_FLOCK)
	$(call KCONFIG_ENABLE_OPT,CONFIG_HEAD)
	$(call KCONFIG_ENABLE_OPT,CONFIG_LOGGER)
	$(call KCONFIG_ENABLE_OPT,CONFIG_MKDIR)
	$(call KCONFIG_ENABLE_OPT,CONFIG_RMDIR)
	$(call KCONFIG_ENABLE_OPT,CONFIG_SED)
	$(call KCONFIG_ENABLE_OPT,CONFIG_SLEEP)
	$(call KCONFIG_ENABLE_OPT,CONFIG_TIMEOUT)
endef

# Buildroot deletes /usr/share/doc, where the build installs these as examples.
define TOLVANE_INSTALL_SCRIPTS
	$(INSTALL) -D -m 0755 $(@D)/scripts/cron-tolvane $(TARGET_DIR)/usr/sbin/cron-tolvane
	$(INSTALL) -D -m 0755 $(@D)/scripts/hotplug-tolvane $(TARGET_DIR)/usr/sbin/hotplug-tolvane
endef
TOLVANE_POST_INSTALL_TARGET_HOOKS += TOLVANE_INSTALL_SCRIPTS

$(eval $(cmake-package))
