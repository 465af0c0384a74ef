# Included only where it is asked for: a condition in a variable would already change BusyBox's signature.
require ${@'busybox/tolvane.inc' if d.getVar('TOLVANE_BUSYBOX') == '1' else ''}
