if exists('b:current_syntax')
  finish
endif
syntax match vrefHeading /^\u[^a-z]*$/
syntax match vrefName /\%1l.*/
syntax match vrefPlace /^    file:\/\/.*$/
highlight default link vrefHeading Title
highlight default link vrefName Identifier
highlight default link vrefPlace Comment
let b:current_syntax = 'vref'
