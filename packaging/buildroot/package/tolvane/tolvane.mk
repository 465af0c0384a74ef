################################################################################
#
# tolvane
#
################################################################################

TOLVANE_VERSION = 2.5.0
TOLVANE_SITE = $(BR2_EXTERNAL_TOLVANE_PATH)/../..
TOLVANE_SITE_METHOD = local
TOLVANE_OVERRIDE_SRCDIR_RSYNC_EXCLUSIONS = --exclude=/build
TOLVANE_LICENSE = MIT
TOLVANE_LICENSE_FILES = LICENSE

TOLVANE_CONF_OPTS = \
	-DTOLVANE_V4_HOST=$(call qstrip,$(BR2_PACKAGE_TOLVANE_V4_HOST)) \
	-DTOLVANE_V6_HOST=$(call qstrip,$(BR2_PACKAGE_TOLVANE_V6_HOST)) \
	$(addprefix -DTOLVANE_,$(call qstrip,$(BR2_PACKAGE_TOLVANE_SLOT_HOSTS)))

# So that tolvane-rebuild is enough after a change of a host.
TOLVANE_PRE_BUILD_HOOKS += TOLVANE_CONFIGURE_CMDS

# The checker needs ifconfig in its classic form and md5sum, the scripts next to
# it the rest. Buildroot's minimal configuration lacks some of them.
define TOLVANE_BUSYBOX_CONFIG_FIXUPS
	$(call KCONFIG_ENABLE_OPT,CONFIG_IFCONFIG)
	$(call KCONFIG_ENABLE_OPT,CONFIG_FEATURE_IFCONFIG_STATUS)
	$(call KCONFIG_ENABLE_OPT,CONFIG_FEATURE_IPV6)
	$(call KCONFIG_ENABLE_OPT,CONFIG_MD5SUM)
	$(call KCONFIG_ENABLE_OPT,CONFIG_CAT)
	$(call KCONFIG_ENABLE_OPT,CONFIG_DATE)
	$(call KCONFIG_ENABLE_OPT,CONFIG_DD)
	$(call KCONFIG_ENABLE_OPT,CONFIG_FLOCK)
	$(call KCONFIG_ENABLE_OPT,CONFIG_GREP)
	$(call KCONFIG_ENABLE_OPT,CONFIG_HEAD)
	$(call KCONFIG_ENABLE_OPT,CONFIG_KILL)
	$(call KCONFIG_ENABLE_OPT,CONFIG_LOGGER)
	$(call KCONFIG_ENABLE_OPT,CONFIG_LS)
	$(call KCONFIG_ENABLE_OPT,CONFIG_MKDIR)
	$(call KCONFIG_ENABLE_OPT,CONFIG_MV)
	$(call KCONFIG_ENABLE_OPT,CONFIG_RM)
	$(call KCONFIG_ENABLE_OPT,CONFIG_SED)
	$(call KCONFIG_ENABLE_OPT,CONFIG_SLEEP)
	$(call KCONFIG_ENABLE_OPT,CONFIG_TR)
endef

# The timer and the wait at boot are for the maker to enable, in a preset file
# that comes first.
define TOLVANE_INSTALL_INIT_SYSTEMD
	$(INSTALL) -D -m 0644 -t $(TARGET_DIR)/usr/lib/systemd/system $(@D)/packaging/systemd/*
	$(INSTALL) -D -m 0644 $(@D)/packaging/debian/tolvane.default $(TARGET_DIR)/etc/default/tolvane
	$(INSTALL) -D -m 0644 $(TOLVANE_PKGDIR)/tolvane.preset \
		$(TARGET_DIR)/usr/lib/systemd/system-preset/60-tolvane.preset
endef

$(eval $(cmake-package))
